#pragma once

#include <QtWidgets/QDialog>

class QLineEdit;
class QPushButton;

/// Asks for a site's name and where it lies. Main thread only.
namespace plotix {

class SiteDetailsDialog : public QDialog {
    Q_OBJECT
public:
    SiteDetailsDialog(const QString& name, const QString& location, QWidget* parent = nullptr);

    QString name() const;  ///< never empty once accepted
    QString location() const;

private:
    // All owned by the dialog.
    QLineEdit* m_name;
    QLineEdit* m_location;
};

}  // namespace plotix
