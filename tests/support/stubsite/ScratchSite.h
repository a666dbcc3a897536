#pragma once

#include "hostapp/document/SiteDocument.h"
#include "records/store/RecordStore.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

/// A site document in a folder of its own, gone with the test. The test *owns* it. Main thread only.
class ScratchSite {
public:
    ScratchSite() : document(plotix::SiteDocument::create(path(), QStringLiteral("Garden"))) {}

    QString path() const { return m_folder.filePath(QStringLiteral("garden.plotix")); }
    QString file(const QString& name) const { return m_folder.filePath(name); }

    /// An agent "Station" with an air temperature in °C and a pressure in hPa.
    std::shared_ptr<plotix::SiteAgent> addStation()
    {
        const auto agent = document->addAgent(QStringLiteral("Station"));
        agent->addProperty(QStringLiteral("Air Temperature"), QStringLiteral("°C"));
        agent->addProperty(QStringLiteral("Pressure"), QStringLiteral("hPa"));
        return agent;
    }

    /// One value of the agent's first property at each time.
    void store(const plotix::SiteAgent& agent, std::vector<double> times)
    {
        const std::size_t count = times.size();
        store(agent, std::move(times), std::vector<double>(count, 20.5));
    }

    void store(const plotix::SiteAgent& agent, std::vector<double> times, std::vector<double> values)
    {
        plotix::RecordBlock block;
        block.times = plotix::SharedArray<double>::fromVector(std::move(times));
        block.columns.push_back({agent.siteProperties().front()->description().id,
                                 plotix::SharedArray<double>::fromVector(std::move(values)),
                                 {}});
        const auto writer = document->records()->begin();
        writer->store(agent.id(), block);
        writer->commit();
    }

    void reopen()
    {
        document.reset();
        document = plotix::SiteDocument::open(path());
    }

private:
    QTemporaryDir m_folder;  // outlives the document

public:
    std::shared_ptr<plotix::SiteDocument> document;
};
