#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"
#include "plugins/PlotixPlugIn/host/KTVWindowController.h"

#include <QtWidgets/QWidget>

class QMenuBar;

/// A top-level window that shows one trend view outside the site window; closing it gives the view back.
///
/// The site window controller *owns* it; *shares* the plug-in. Main thread only.
namespace plotix {

class SeparateWindow : public QWidget, public KTVWindowController {
    Q_OBJECT
public:
    SeparateWindow(KTVPlugInPtr plugIn, const QString& siteName);
    ~SeparateWindow() override;

    KTVPlugInPtr contentViewController() const override { return m_plugIn; }
    QWidget* window() const override { return const_cast<SeparateWindow*>(this); }

    /// Empty at first: whoever opened the window fills it.
    QMenuBar* menuBar() const { return m_menuBar; }

    /// Takes the view out of the window, so that the view outlives it.
    void releaseView();

signals:
    void closed();  ///< the view has no window now

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    KTVPlugInPtr m_plugIn;
    QMenuBar* m_menuBar;
};

}  // namespace plotix
