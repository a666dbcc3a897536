#pragma once

#include "plugins/PlotixPlugIn/reading/statistics/ComparedColumns.h"
#include "plugins/PlotixPlugIn/reading/statistics/StatisticsHeading.h"
#include "plugins/PlotixPlugIn/reading/statistics/StatisticsTable.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QMenu>

#include <memory>

/// The table tells more: figures beyond its own columns, over everything fetched, what is visible, or from A to B.
///
/// Nothing of it is there until it is chosen: columns, another span, or the heading and the menu that offer both.
/// *Owned* by the trend's reader. Main thread only.
namespace plotix {

class StatisticsPart : public ReadingPart {
    Q_OBJECT
public:
    explicit StatisticsPart(ReadTrend& trend);
    ~StatisticsPart() override;

    QString key() const override { return QStringLiteral("statistics"); }
    QVariantMap chosen() const override { return mapFromChoices(m_choices); }
    void choose(const QVariantMap& choices) override { change(choicesFromMap(choices)); }

    void viewLoaded() override;
    void plotsReplaced() override { refreshSoon(); }
    void clockSet() override;
    void linesChanged() override { refreshSoon(); }
    void graphReleased() override { refreshSoon(); }
    void markedSpanSet() override { refreshSoon(); }
    void rangeSet(CPTCoordinate coordinate) override;

    std::vector<QAction*> actions() const override;
    TableFigures* tableFigures() override;

    const StatisticsChoices& choices() const { return m_choices; }
    void change(const StatisticsChoices& choices);
    /// Asks for a limit of the line, in its unit, and counts the times above or below it from then on.
    void askForLimit(const QString& key, Figure figure);

private:
    class Figures;
    void makeActions();
    void checkActions();
    void refreshSoon();
    void refresh();
    void tellHeading();
    QString spanText() const;
    QString aboutText() const;
    void goToExtreme(Figure figure);  ///< of the line that is meant
    void goToTime(const QString& key, Figure figure);
    void holdValueLine(double time);
    void setColumn(const QString& identifier, bool isChosen);
    void toggleColumn(const FigureColumn& column, bool isChosen);
    QAction* addColumnsMenu();
    QAction* addExtremesMenu(const char* title, Figure figure);
    void setOver(StatisticsOver over);
    void setLimit(const QString& key, Figure figure, double value);
    void removeLimits();
    QString currentKey() const;
    StatisticsHeading* makeHeading(QWidget* parent);

    StatisticsChoices m_choices;
    FigureKeeper m_keeper;
    StatisticsTable m_table;
    ComparedColumns m_compared;
    QStringList m_comparisons;  // that the table has columns for
    std::unique_ptr<Figures> m_figures;
    std::vector<QAction*> m_overActions, m_columnActions;  // children
    std::vector<QAction*> m_extremeActions;                // likewise: each a menu of lines
    std::vector<QAction*> m_lineActions;                   // likewise: what is done with one line
    std::vector<std::unique_ptr<QMenu>> m_extremeMenus;    // of lines
    std::unique_ptr<QMenu> m_columnsMenu;
    QPointer<StatisticsHeading> m_heading;
    QString m_currentKey;
    QTimer m_ageing;   // while ages are shown
    QTimer m_resting;  // while a pan goes on that the figures have still to follow
    bool m_isRefreshing = false;
};

}  // namespace plotix
