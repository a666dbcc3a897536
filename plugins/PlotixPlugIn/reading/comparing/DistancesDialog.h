#pragma once

#include <QtWidgets/QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

/// Asks how long before a trend is compared with itself, in several distances typed one after the other. Deletes itself
/// when it is closed; its parent *owns* it. Main thread only.
namespace plotix {

class DistancesDialog : public QDialog {
    Q_OBJECT
public:
    /// Shows `distances`, as they are stored.
    DistancesDialog(const QStringList& distances, QWidget* parent);

signals:
    void distancesGiven(const QStringList& distances);  ///< as they are stored, each once; none: nothing is compared

private:
    void judge();
    void take();

    QLineEdit* m_field;
    QLabel* m_problem;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
