#pragma once

#include "plugins/PlotixPlugIn/reading/statistics/StatisticsChoices.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QWidget>

#include <array>

/// The heading of the table of statistics: "Statistics of", a switch of three, and what the span is. Its parent *owns*
/// it. Main thread only.
namespace plotix {

class StatisticsHeading : public QWidget {
    Q_OBJECT
public:
    explicit StatisticsHeading(QWidget* parent);

    struct State {
        StatisticsOver over = StatisticsOver::Fetched;
        bool isMarked = false;  ///< without marks their span cannot be chosen
        QString span;           ///< its words
        bool isWorking = false;
    };
    void show(const State& state);
    QToolButton* button(StatisticsOver over) const { return m_buttons[static_cast<std::size_t>(over)]; }
    QToolButton* stopButton() const { return m_stop; }

signals:
    void chosen(StatisticsOver over);
    void stopped();

private:
    void addButton(StatisticsOver over, const QString& text, const QString& hint);

    std::array<QToolButton*, 3> m_buttons{};
    QLabel* m_span;
    QToolButton* m_stop;
};

}  // namespace plotix
