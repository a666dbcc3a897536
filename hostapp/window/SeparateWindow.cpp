#include "hostapp/window/SeparateWindow.h"

#include "hostapp/site/SourceListModel.h"
#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"

#include <QtGui/QAction>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

SeparateWindow::SeparateWindow(KTVPlugInPtr plugIn, const QString& siteName)
    : m_plugIn(std::move(plugIn)), m_menuBar(new QMenuBar(this))
{
    const auto showTitle = [this, siteName] { setWindowTitle(tr("%1 – %2").arg(titleOf(*m_plugIn), siteName)); };
    connect(m_plugIn.get(), &KTVPlugIn::titleChanged, this, showTitle);
    showTitle();
    setWindowIcon(m_plugIn->icon());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setMenuBar(m_menuBar);
    QWidget* view = m_plugIn->view();
    column->addWidget(view);
    view->show();  // being taken out of another window has hidden it
    auto* close = new QAction(this);
    close->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
    resize(960, 640);
}

SeparateWindow::~SeparateWindow()
{
    releaseView();
}

void SeparateWindow::releaseView()
{
    if (m_plugIn->isViewLoaded() && m_plugIn->view() && m_plugIn->view()->parentWidget() == this)
        removeFromSuperview(m_plugIn->view());
}

void SeparateWindow::closeEvent(QCloseEvent* event)
{
    releaseView();
    event->accept();
    emit closed();
}

}  // namespace plotix
