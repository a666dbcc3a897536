#pragma once

#include "hostapp/site/TrendPicture.h"

#include <QtWidgets/QDialog>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/// Asks for a picture of a trend: of what, in which format, how large and how dense. Begins with what was accepted
/// last. Main thread only.
namespace plotix {

class ExportPictureDialog : public QDialog {
    Q_OBJECT
public:
    enum class Table { Offered, NotOffered };  ///< not for a view that gives no figures

    ExportPictureDialog(const QString& title, Table table, QWidget* parent = nullptr);

    /// Size 40 × 40 to 16,384 × 16,384 points, density 0.5 to 8 pixels a point.
    TrendPicture picture() const;
    void setPicture(const TrendPicture& picture);  ///< brought into these limits; without its title

    void accept() override;  ///< remembers all but the title

private:
    void buildFields(Table table);
    void buildForm(const QString& title);
    void adjust();

    // All owned by the dialog.
    QComboBox *m_what, *m_format;
    QSpinBox *m_width, *m_height;
    QDoubleSpinBox* m_density;
    QLineEdit* m_title;
    QLabel* m_pixels;
    QPushButton* m_export = nullptr;
};

}  // namespace plotix
