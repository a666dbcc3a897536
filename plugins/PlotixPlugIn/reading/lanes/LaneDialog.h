#pragma once

#include "plugins/PlotixPlugIn/reading/lanes/LaneScale.h"

#include <QtWidgets/QDialog>

#include <vector>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QGridLayout;
class QLabel;
class QLineEdit;

/// Scale, range and height of each lane, typed. What is chosen shows at once; Cancel puts everything back.
///
/// The trend's window *owns* it; it *borrows* the arrangement, with which it closes. Main thread only.
namespace plotix {

class Arrangement;

class LaneDialog : public QDialog {
    Q_OBJECT
public:
    LaneDialog(Arrangement& arrangement, QWidget* parent);

    void reject() override;

private:
    struct Row {
        QString key;
        QComboBox* scale;
        QComboBox* fit;
        QLineEdit* lowest;
        QLineEdit* highest;
        QLineEdit* height;
    };

    void addRow(QGridLayout* grid, std::size_t lane);
    void takeOver();
    /// What a row says; what is wrong with it goes into `problem`.
    LaneSettings settingsOf(const Row& row, QString& problem) const;

    Arrangement& m_arrangement;
    QVariantMap m_before;
    std::vector<Row> m_rows;
    QLabel* m_problem;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
