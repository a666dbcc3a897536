#pragma once

#include "hostapp/window/annotating/NotesModel.h"

#include <QtWidgets/QDialog>

#include <optional>

class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

/// The list of a site's notes beside its window: sorted by any column, searched while typing. A click goes to a note's
/// time, a double click opens it; all of it by keys, too.
///
/// It changes nothing itself: whoever listens does. Main thread only.
namespace plotix {

class NotesWindow : public QDialog {
    Q_OBJECT
public:
    explicit NotesWindow(std::shared_ptr<SiteDocument> document, QWidget* parent = nullptr);

    void sayBy(const QTimeZone& zone) { m_notes->sayBy(zone); }  ///< an invalid one is the user's

signals:
    void goToWanted(double from, double to);
    void openWanted(qint64 note);
    void addWanted();
    void removeWanted(const std::vector<qint64>& notes);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeTable();
    void makeButtons();
    void update();
    std::vector<qint64> selected() const;
    std::optional<SiteNote> current() const;
    void goToCurrent();
    void openCurrent();

    std::shared_ptr<SiteDocument> m_document;
    // All owned by the dialog.
    NotesModel* m_notes;
    QSortFilterProxyModel* m_found;
    QLineEdit* m_search;
    QTableView* m_table;
    QPushButton* m_goTo;
    QPushButton* m_open;
    QPushButton* m_add;
    QPushButton* m_remove;
};

}  // namespace plotix
