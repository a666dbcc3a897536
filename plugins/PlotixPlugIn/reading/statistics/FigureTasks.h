#pragma once

#include "plugins/PlotixPlugIn/reading/figures/LineSummary.h"

#include <QtCore/QObject>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>

#include <atomic>
#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

/// Long work beside the main thread, one list of tasks at a time, told of as it goes. Its end stops what runs and waits
/// for it. Main thread only; the tasks run on another one.
namespace plotix {

/// Reads `records` records, on any thread, and answers what is to be done with the outcome on the main thread; nothing
/// when it was stopped.
struct FigureTask {
    using Deliver = std::function<void()>;
    std::size_t records = 0;
    std::function<Deliver(const Work& work)> run;
};

class FigureTasks : public QObject {
    Q_OBJECT
public:
    FigureTasks();
    ~FigureTasks() override;

    /// Stops what runs, whose outcomes are dropped from now on, and begins these.
    void start(std::vector<FigureTask> tasks);
    void stop();
    bool isRunning() const { return m_run != nullptr; }
    double progress() const;  ///< 0 to 1

signals:
    void progressed();  ///< now and then
    void ended();       ///< all outcomes have been delivered; not when it was stopped

private:
    struct Run {
        std::stop_source stop;
        std::atomic<std::size_t> done{0};
        std::size_t records = 0;
    };
    void finish(const std::shared_ptr<Run>& run);

    std::shared_ptr<Run> m_run;  // null: nothing runs
    QThreadPool m_workers;
    QTimer m_telling;
};

}  // namespace plotix
