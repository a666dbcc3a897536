#pragma once

#include <QtCore/QTimeZone>
#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

/// Asks for a time zone: a list of all of them, and a field that narrows it down by parts of a name or of a country.
///
/// The arrow keys move in the list while the field has the focus. Deletes itself when it is closed; its parent *owns*
/// it. Main thread only.
namespace plotix {

class ZoneDialog : public QDialog {
    Q_OBJECT
public:
    /// Begins with `present`.
    ZoneDialog(const QTimeZone& present, QWidget* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void zoneGiven(const QString& zone);  ///< its name

private:
    void fill(const QTimeZone& present);
    void narrow();
    void judge();
    void take();

    // All owned by the dialog.
    QLineEdit* m_field;
    QListWidget* m_list;
    QLabel* m_hint;
    QPushButton* m_ok;
};

}  // namespace plotix
