#pragma once

#include "plugins/PlotixPlugIn/host/KTVRecordColumn.h"
#include "plugins/PlotixPlugIn/reading/figures/LimitSummary.h"
#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"
#include "plugins/PlotixPlugIn/reading/statistics/FigureTasks.h"
#include "plugins/PlotixPlugIn/reading/trend/TimeSpan.h"

#include <QtCore/QString>

#include <map>
#include <optional>
#include <vector>

/// The figures of a trend's lines over one span: keeps each line's sums as long as its records stay, works out on
/// another thread what takes long, and tells when something is there.
///
/// What a few hundred thousand records take is worked out at once. The statistics part *owns* it. Main thread only.
namespace plotix {

/// A line whose figures are kept. A value; *shares* the records.
struct FigureLine {
    QString key;
    RecordTimes times;
    std::shared_ptr<KTVRecordColumn> column;
    double longestJoin = 0;  ///< seconds
};

/// Values in the unit shown; absent: no such limit.
struct LineLimits {
    std::optional<double> high, low;
    friend bool operator==(const LineLimits&, const LineLimits&) = default;
};

/// What is asked of all lines.
struct FigureQuestion {
    std::optional<TimeSpan> span;          ///< nothing: no line has figures
    std::vector<double> shares;            ///< of the percentiles wanted, 0 to 1
    std::map<QString, LineLimits> limits;  ///< by key
    friend bool operator==(const FigureQuestion&, const FigureQuestion&) = default;
};

class FigureKeeper : public QObject {
    Q_OBJECT
public:
    FigureKeeper();
    ~FigureKeeper() override;

    /// Lines that are the same as before keep their sums.
    void setLines(const std::vector<FigureLine>& lines);
    void ask(const FigureQuestion& question);
    const FigureQuestion& question() const { return m_question; }

    // By key; nothing while it is being worked out, for a line that is not kept, and without a span.
    std::optional<LineFigures> figures(const QString& key) const;
    std::optional<double> percentile(const QString& key, double share) const;
    std::optional<LimitFigures> aboveHigh(const QString& key) const;
    std::optional<LimitFigures> belowLow(const QString& key) const;
    /// The last record with a value, wherever the span is.
    std::optional<LineSummary::Point> latest(const QString& key) const;

    bool isWorking() const { return m_tasks.isRunning(); }
    double progress() const { return m_tasks.progress(); }
    void cancel();  ///< what is being worked out is left out, until something else is asked
    bool isCancelled() const { return m_isCancelled; }
    void finish();  ///< works out the rest here and now

signals:
    void changed();
    void progressed();

private:
    struct Kept {
        FigureLine line;
        QString unit;
        FigureRecords records;
        std::shared_ptr<const LineSummary> sums;
        bool isBehind = false;  ///< the sums are those of the records before, which these carry on
        std::shared_ptr<const LimitSummary> high, low;
        mutable std::optional<LineFigures> figures;
        std::optional<std::vector<double>> percentiles;
    };
    using TaskList = std::vector<FigureTask>;
    Kept kept(const FigureLine& line) const;
    const Kept* at(const QString& key) const;
    Kept* at(const QString& key);
    void forgetAnswers();
    void update();
    TaskList nextTasks();
    TaskList sumTasks();
    void takeSums(const QString& key, const std::shared_ptr<const LineSummary>& sums);
    void addLimitTasks(TaskList& tasks, const Kept& kept);
    void addPercentileTask(TaskList& tasks, const Kept& kept);
    void runHere(const TaskList& tasks);

    std::vector<Kept> m_lines;
    FigureQuestion m_question;
    FigureTasks m_tasks;
    bool m_isSumming = false;  // the tasks that run make sums: these outlast a change of the question
    bool m_isCancelled = false;
};

}  // namespace plotix
