#include "plugins/PlotixPlugIn/reading/statistics/FigureTasks.h"

#include "base/MainQueue.h"

#include <algorithm>
#include <numeric>

namespace plotix {

namespace {

constexpr int kMillisecondsBetweenTellings = 200;

}  // namespace

FigureTasks::FigureTasks()
{
    MainQueue::main();  // known as the main thread's before another one posts
    m_workers.setMaxThreadCount(1);
    m_telling.setInterval(kMillisecondsBetweenTellings);
    connect(&m_telling, &QTimer::timeout, this, &FigureTasks::progressed);
}

FigureTasks::~FigureTasks()
{
    stop();
    m_workers.waitForDone();
}

void FigureTasks::start(std::vector<FigureTask> tasks)
{
    stop();
    m_run = std::make_shared<Run>();
    for (const FigureTask& task : tasks)
        m_run->records += task.records;
    m_telling.start();
    // Outcomes are handed over weakly: this object may be gone by the time they are taken up, and its run with it.
    const std::weak_ptr<Run> weak = m_run;
    m_workers.start([this, weak, run = m_run, work = std::move(tasks)] {
        const Work told{run->stop.get_token(), [&run](std::size_t records) { run->done += records; }};
        for (const FigureTask& task : work) {
            FigureTask::Deliver deliver = task.run(told);
            if (told.isStopped() || !deliver)
                return;
            MainQueue::main().async([weak, deliver = std::move(deliver)] {
                if (const auto running = weak.lock(); running && !running->stop.stop_requested())
                    deliver();
            });
        }
        MainQueue::main().async([this, weak] {
            if (const auto running = weak.lock(); running && !running->stop.stop_requested())
                finish(running);
        });
    });
}

void FigureTasks::finish(const std::shared_ptr<Run>& run)
{
    if (m_run != run)
        return;
    m_run.reset();
    m_telling.stop();
    emit ended();
}

void FigureTasks::stop()
{
    m_telling.stop();
    if (m_run)
        m_run->stop.request_stop();
    m_run.reset();
}

double FigureTasks::progress() const
{
    if (!m_run || m_run->records == 0)
        return 0;
    return std::min(1.0, static_cast<double>(m_run->done) / static_cast<double>(m_run->records));
}

}  // namespace plotix
