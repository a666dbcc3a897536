#pragma once

#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/live/Recording.h"
#include "tests/hostapp/live/MadeUpSource.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

/// Records a made-up source into a site of its own, and reads back what came to be stored.
class RecordingFixture : public testing::Test {
protected:
    QString site() const { return folder.filePath("computer.plotix"); }

    void begin()
    {
        recording.reset();
        auto made = std::make_unique<MadeUpSource>();
        source = made.get();
        recording = std::make_unique<plotix::Recording>(site(), std::move(made));
    }
    plotix::RecordingStatus record(double time) { return recording->record(time); }

    std::vector<double> times() { return column("Count", true); }
    std::vector<double> values(const char* name) { return column(name, false); }

    QTemporaryDir folder;
    MadeUpSource* source = nullptr;
    std::unique_ptr<plotix::Recording> recording;

private:
    /// Times, or the values that are valid.
    std::vector<double> column(const char* name, bool wantsTimes)
    {
        const auto document = plotix::SiteDocument::open(site());
        const auto agent = document->agentNamed("Made Up");
        for (const auto& property : agent->siteProperties())
            if (property->name() == QLatin1String(name)) {
                const plotix::RowId id = property->description().id;
                const auto block = plotix::recordsOfSite(site())->read(agent->id(), std::span(&id, 1), {}, {});
                std::vector<double> found;
                for (std::size_t i = 0; i < block->times.size(); ++i)
                    if (wantsTimes)
                        found.push_back(block->times[i]);
                    else if (block->columns[0].validity.isValid(i))
                        found.push_back(block->columns[0].values[i]);
                return found;
            }
        ADD_FAILURE() << "there is no " << name;
        return {};
    }
};
