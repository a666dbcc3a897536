#pragma once

#include "plugins/PlotixPlugIn/host/KTVHelpManager.h"

#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QTextBrowser;

/// The help: one window, one page an anchor, in the installed language. Main thread only.
namespace plotix {

/// In the order of the contents list: "start", "trend", "dates" …
QStringList helpAnchors();

/// The page's text as HTML; an unknown anchor answers the first page.
QString helpPage(const QString& anchor);

/// Contents at the left, the page at the right, a field to search in it. Links lead to other pages as `help:ANCHOR`.
class HelpWindow : public QDialog {
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* parent = nullptr);
    void showPage(const QString& anchor);
    QString shownAnchor() const;
    QString plainText() const;

    /// Selects the next place after the one selected, starting over at the top; false when the page has none.
    bool find(const QString& text);

private:
    void buildContents();
    void buildKeys();
    void loadRow(int row);

    // Owned by the dialog.
    QListWidget* m_contents;
    QTextBrowser* m_browser;
    QLineEdit* m_search;
    QLabel* m_outcome;
};

/// Opens the help window at an anchor, making it on first use. *Owns* it.
class HelpManager : public KTVHelpManager {
public:
    ~HelpManager() override;
    void openHelpAnchor(const QString& anchor) override;
    HelpWindow* window() const { return m_window; }  ///< null before the first opening

private:
    QPointer<HelpWindow> m_window;
};

}  // namespace plotix
