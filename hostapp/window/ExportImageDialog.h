#pragma once

#include <QtCore/QSize>
#include <QtWidgets/QDialog>

class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QSpinBox;

/// Asks how large and how dense a picture of a graph shall be. Main thread only.
namespace plotix {

class ExportImageDialog : public QDialog {
    Q_OBJECT
public:
    explicit ExportImageDialog(const QString& title, QWidget* parent = nullptr);

    QSize size() const;      ///< points, 40 × 40 to 16,384 × 16,384
    double density() const;  ///< pixels a point, 0.5 to 8
    QString title() const;   ///< above the graph; empty: none

    void setSize(const QSize& points);
    void setDensity(double density);

private:
    void describePixels();

    // All owned by the dialog.
    QSpinBox* m_width;
    QSpinBox* m_height;
    QDoubleSpinBox* m_density;
    QLineEdit* m_title;
    QLabel* m_pixels;
};

}  // namespace plotix
