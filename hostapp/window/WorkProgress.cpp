#include "hostapp/window/WorkProgress.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

#include <atomic>
#include <exception>
#include <memory>

namespace plotix {

namespace {

constexpr unsigned long kSilentWait = 300;  // milliseconds; a shorter wait needs no word
constexpr int kShownInterval = 50;          // milliseconds between looks at the progress
constexpr int kWhole = 1000;

class WorkProgressText {
    Q_DECLARE_TR_FUNCTIONS(WorkProgressText)
};

struct Work {
    std::unique_ptr<QThread> thread;
    std::atomic<bool> cancelled = false;
    std::atomic<int> permille = 0;
    std::exception_ptr failure;  // written by the worker before the thread ends, read afterwards
};

void showUntilDone(Work& work, const QString& label, QWidget* parent)
{
    QProgressDialog dialog(label, WorkProgressText::tr("Cancel"), 0, kWhole, parent);
    showLabelPlainly(dialog);
    dialog.setObjectName(QStringLiteral("workProgress"));
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);
    dialog.setMinimumDuration(0);
    QEventLoop loop;
    QTimer look;
    const auto cancel = [&work, &dialog] {
        work.cancelled = true;
        // It stays until the work has ended, which cannot stop at every moment.
        dialog.setLabelText(WorkProgressText::tr("Cancelling…"));
        dialog.findChild<QPushButton*>()->setEnabled(false);
        dialog.show();
    };
    QObject::connect(&dialog, &QProgressDialog::canceled, &loop, cancel);
    QObject::connect(&dialog, &QDialog::rejected, &loop, cancel);  // Escape, where its button has not got it
    QObject::connect(&look, &QTimer::timeout, &loop, [&work, &dialog, &loop] {
        if (work.thread->isFinished())
            loop.quit();
        else if (!work.cancelled)
            dialog.setValue(work.permille);
    });
    QObject::connect(work.thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    look.start(kShownInterval);
    dialog.show();
    loop.exec();
}

}  // namespace

void showLabelPlainly(QProgressDialog& dialog)
{
    dialog.findChild<QLabel*>()->setTextFormat(Qt::PlainText);
}

void workWithProgress(const QString& label, QWidget* parent,
                      const std::function<void(const WorkProgress& progress)>& work)
{
    Work running;
    const WorkProgress progress = [&running](double fraction) {
        running.permille = static_cast<int>(fraction * kWhole);
        return !running.cancelled;
    };
    running.thread.reset(QThread::create([&] {
        try {
            work(progress);
        } catch (...) {
            running.failure = std::current_exception();
        }
    }));
    running.thread->start();
    if (!running.thread->wait(kSilentWait))
        showUntilDone(running, label, parent);
    running.thread->wait();
    if (running.failure)
        std::rethrow_exception(running.failure);
}

}  // namespace plotix
