#pragma once

#include "plugins/PlotixPlugIn/reading/marks/MarkFigures.h"

#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;
class QTableWidget;

/// The window of the marks: two fields for their times, and a row for each shown line with what it reads at A and at B,
/// the difference, the slope, and figures of the stretch between them.
///
/// Stays open while the trend is worked with and follows it; closed, it is gone. Its parent *owns* it, the part may
/// delete it; it holds the part *weakly*. Main thread only.
namespace plotix {

class MarksPart;
enum class Mark;

class MarksWindow : public QDialog {
    Q_OBJECT
public:
    MarksWindow(MarksPart& part, QWidget* parent);

    QString tableText() const;  ///< titles and rows, cells separated by tabs

private:
    QLineEdit* addField(QWidget* above, Mark mark);
    void buildRows();
    QWidget* makeButtons();
    void update();
    void fillRow(int row, const QStringList& cells, const QColor& color);
    QStringList cellsOf(const TrendLine& line);
    void take(QLineEdit* field, Mark mark);
    void judge(QLineEdit* field, Mark mark);

    QPointer<MarksPart> m_part;
    StretchFigures m_figures;
    QLineEdit* m_a = nullptr;
    QLineEdit* m_b = nullptr;
    QLabel* m_distance = nullptr;
    QTableWidget* m_table = nullptr;
    std::vector<QWidget*> m_onBoth;  // buttons
};

}  // namespace plotix
