#pragma once

#include <QtCore/QTimeZone>
#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for a site's name, where it lies, and the zone of its clocks. Main thread only.
namespace plotix {

class SiteDetailsDialog : public QDialog {
    Q_OBJECT
public:
    SiteDetailsDialog(const QString& name, const QString& location, const QTimeZone& zone, QWidget* parent = nullptr);

    QString name() const;  ///< never empty once accepted
    QString location() const;
    QTimeZone zone() const;  ///< invalid: none was given

private:
    void judge();

    // All owned by the dialog.
    QLineEdit* m_name;
    QLineEdit* m_location;
    QLineEdit* m_zone;
    QLabel* m_problem;
    QPushButton* m_accept;
};

}  // namespace plotix
