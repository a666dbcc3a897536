#include "hostapp/app/WindowPicture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

namespace plotix {

namespace {

/// Runs the event loop until everything posted so far is done.
void comeRound()
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, &QEventLoop::quit);
    loop.exec();
}

}  // namespace

void waitForTrend(SiteWindow& window)
{
    comeRound();
    window.controller().waitForRecords();
    comeRound();
}

QImage pictureOfWindow(SiteWindow& window, const QSize& size)
{
    window.setWindowState(Qt::WindowNoState);
    window.resize(size);
    window.show();
    waitForTrend(window);
    window.resize(size);  // a window manager may have changed it while the window appeared
    comeRound();
    // The first painting reports the drawing finished, which ends the busy state; the second one shows that.
    window.grab();
    comeRound();
    return window.grab().toImage();
}

}  // namespace plotix
