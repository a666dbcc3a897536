#pragma once

#include "hostapp/exchange/Importer.h"
#include "hostapp/site/FigureRecipe.h"
#include "hostapp/window/SiteActions.h"
#include "hostapp/window/SiteWindowController.h"
#include "hostapp/window/WindowServices.h"
#include "plugins/PlotixPlugIn/host/KTVHelpManager.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QTimer>
#include <QtGui/QUndoStack>
#include <QtWidgets/QMainWindow>

#include <functional>
#include <memory>

class QListView;
class QSplitter;
class QStackedWidget;
class QVBoxLayout;

namespace plotix {

class AnnotationAsking;
class EmptyStateView;
class ImportSequence;
class LiveControls;
class PropertyHistory;
class PropertyListModel;
class PropertyListView;
class SiteDrops;
class SiteEditor;
class TrendHistory;
class TrendKeys;
class TrendOutputs;
class WebSwitch;

/// One site on the screen: its trends and properties at the left, the selected trend at the right.
///
/// *Owns* its controller, *borrows* the services. Everything shown is stored in the site document as it changes,
/// windows included; a site without a stored window takes the size of the one closed last. Main thread only.
///
///   construction, layout, selection        SiteWindow.cpp
///   what the menus do                      SiteWindow_Actions.cpp
///   deleting, renaming, moving, undoing    SiteWindow_Trends.cpp
///   storing, and opening as it was left    SiteWindow_Memory.cpp
///   recent sites, the other windows        SiteWindow_Windows.cpp
///   views of links and figures             SiteWindow_Views.cpp
///   importing, files that are dropped      SiteWindow_Import.cpp
///
/// Recording and following are in LiveControls, the web in WebSwitch, drags in SiteDrops, outputs in TrendOutputs.
class SiteWindow : public QMainWindow {
    Q_OBJECT
public:
    SiteWindow(std::shared_ptr<SiteDocument> document, const WindowServices& services);
    ~SiteWindow() override;

    SiteWindowController& controller() { return *m_controller; }
    const SiteActions& actions() const { return m_actions; }
    PropertyListModel& propertyList() { return *m_properties; }
    EmptyStateView* emptyState() const { return m_emptyState; }
    QUndoStack& undoStack() { return m_undoStack; }

    /// Stores trends and windows as they are now; what has not changed is not written.
    void storeNow();

    /// Closes the window without asking about what closing ends.
    void closeAsOrdered();

    KTVPlugInPtr selectedPlugIn() const;  ///< null while none is selected
    /// The trend that the menus act on: that of the separate window in front, else the selected one.
    KTVPlugInPtr trendInFront() const;
    QWidget* windowInFront();  ///< the separate window in front, else this one
    void selectPlugIn(const KTVPlugInPtr& plugIn);

    // See ImportSequence.
    void startImport(const QString& file, const ImportOptions& options);
    void askAndImportAll(const QStringList& files);

    /// Shows what a figure or a link tells; an alert says what this site does not have of it.
    void showView(const ShownView& view);
    /// The same of a figure in a file, in the window of its site; an alert where the figure does not tell. False for a
    /// file that is no figure.
    bool openFigure(const QString& file);

    /// Makes a trend for each agent with ticked properties; without ticks one of every property of the first agent.
    void newTrend();

signals:
    void openSiteRequested(const QString& path);
    void openViewRequested(const ShownView& view, const QString& folder);  ///< of another site; it may be in `folder`
    void newSiteRequested(const QString& path);
    void importEnded(bool stored);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // Layout and selection.
    void buildLayout();
    QWidget* makeSection(const QString& title, QWidget* content);
    void connectLists();
    void showSelection();
    void showEmptyState();
    void makeWebSwitch();
    void makeLiveControls();
    void showStatusBarIfNeeded();
    void showPlugInView(const KTVPlugInPtr& plugIn);
    void emptyStateButtonPressed(int button);

    // Menus.
    void connectFileActions();
    void makeOutputs();
    void connectOtherActions();
    QString helpAnchor();  ///< of what has the focus
    void updateActions();
    void askForSite();
    void openFromServer(const QString& address);  ///< empty: asks
    void askForSiteDetails();
    void askForNewSite();
    void copy();
    void holdModifiers();
    void tell(const QString& message);  ///< briefly, in the status bar
    void showAlert(const QString& message, const QString& text, KTVAlert::Style style = KTVAlert::Style::Critical,
                   std::function<void()> dismissed = {});

    // Trends.
    void connectTrendActions();
    void updateTrendActions(const QString& noTrend);
    void openInSeparateWindow();
    void bringBack();
    void moveTrend(int rows);
    std::vector<KTVPlugInPtr> trendsOnScreen() const;
    bool isOurs(const QWidget* widget) const;

    // Editing the site.
    void makeEditor();
    void updateEditingActions();

    // Memory.
    void restoreWindow();
    void reopenSeparateWindows();
    WindowState currentState() const;

    // Windows.
    void connectWindowActions();
    void fillRecentMenu();
    void fillWindowMenu();
    void equipSeparateWindow(const KTVPlugInPtr& plugIn);

    // Import.
    void connectImporting();
    void takeFiles(const QStringList& files);
    void showImported(const ImportSummary& summary);
    void addFirstTrend(const ImportSummary& summary);

    std::unique_ptr<SiteWindowController> m_controller;
    WindowMemory m_memory;
    QUndoStack m_undoStack;  ///< shares deleted plug-ins: cleared before the controller ends
    WindowServices m_services;
    SiteActions m_actions;
    std::unique_ptr<PropertyListModel> m_properties;
    std::unique_ptr<PropertyHistory> m_propertyHistory;
    std::unique_ptr<TrendHistory> m_trendHistory;
    std::unique_ptr<SiteEditor> m_editor;
    std::unique_ptr<AnnotationAsking> m_annotationAsking;
    std::unique_ptr<TrendOutputs> m_outputs;
    std::unique_ptr<ImportSequence> m_importing;
    std::unique_ptr<SiteDrops> m_drops;
    std::unique_ptr<LiveControls> m_live;
    std::unique_ptr<WebSwitch> m_web;
    std::unique_ptr<TrendKeys> m_trendKeys;
    QTimer m_storeTimer;
    QString m_lastStoringFailure;
    bool m_asksBeforeClosing = true;
    bool m_restored = false;  ///< the separate windows have been opened again; until then they count as open
    std::vector<std::function<void()>> m_emptyStateActions;  ///< what its buttons do, in order

    // Owned by the window.
    QSplitter* m_columns = nullptr;
    QSplitter* m_lists = nullptr;
    QListView* m_trendList = nullptr;
    PropertyListView* m_propertyView = nullptr;
    QStackedWidget* m_stack = nullptr;
    EmptyStateView* m_emptyState = nullptr;
};

enum class Closing {
    Asked,   ///< the user may be asked, and may keep a window open
    Ordered  ///< by the system: nobody may be there to answer
};

/// Ends the program: closes every site window as the user would, then all other windows, unless a window stays open.
void closeAllSites(Closing closing);

}  // namespace plotix
