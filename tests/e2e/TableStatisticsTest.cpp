#include "hostapp/app/Composition.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/site/WaitForRecords.h"
#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "plugins/PlotixPlugIn/host/KTVConverter.h"
#include "tests/e2e/ProgramTest.h"

#include <QtCore/QJsonArray>

// The table of a trend over the real archive against what the program itself counts without any trend.

namespace plotix {

class TableStatistics : public ProgramTest {
protected:
    void expectTableEqualsInfo(const QJsonObject& info)
    {
        const auto agent = agentNamed(info["name"].toString());
        const auto trend = KTVPlotixPlugIn::initWithAgent(agent, nullptr, agent->properties().objects(), Date{-1e9},
                                                          Date{1e10});  // everything there is
        trend->view();                                                  // loading it fetches
        waitForRecords(*agent);
        const QJsonArray properties = info["properties"].toArray();
        const InfoTableArray& rows = *trend->infoTableArray();
        ASSERT_EQ(rows.size(), static_cast<std::size_t>(properties.size()));
        for (const InfoTableRowPtr& row : rows)
            expectRowEquals(*row, propertyNamed(row->propertyName, properties));
    }

    static QJsonObject propertyNamed(const QString& key, const QJsonArray& properties)
    {
        for (const QJsonValue& property : properties)
            if (property["propertyName"].toString() == key)
                return property.toObject();
        ADD_FAILURE() << key.toStdString();
        return {};
    }

    static void expectRowEquals(const InfoTableRow& row, const QJsonObject& property)
    {
        const double average = KTVConverter::roundValue(property["average"].toDouble(), 10);
        EXPECT_EQ(row.points, property["valid"].toInt()) << row.tableName.toStdString();
        EXPECT_EQ(row.minimum, static_cast<float>(property["minimum"].toDouble())) << row.tableName.toStdString();
        EXPECT_EQ(row.maximum, static_cast<float>(property["maximum"].toDouble())) << row.tableName.toStdString();
        EXPECT_EQ(row.average, static_cast<float>(average)) << row.tableName.toStdString();
    }

    std::shared_ptr<SiteAgent> agentNamed(const QString& name)
    {
        if (!document)
            document = SiteDocument::open(path("nyc.plotix"));
        for (const auto& agent : document->agents())
            if (agent->name() == name)
                return agent;
        return nullptr;
    }

    Composition composition{Composition::Audience::Nobody};
    std::shared_ptr<SiteDocument> document;
};

TEST_F(TableStatistics, OfTheAirportsWeatherAreThoseOfInfo)
{
    PLOTIX_MEASUREMENTS(file, "airport-weather-2013.csv");
    for (const QString agent : {"EWR", "JFK", "LGA"})
        ASSERT_EQ(run({"import", file, "--site", "nyc.plotix", "--agent", agent, "--where", "origin=" + agent, "--time",
                       "time_hour", "--unit", "temp=°F", "--unit", "pressure=mbar", "--name", "temp=Air Temperature"}),
                  0)
            << error().toStdString();
    const QJsonArray agents = runForJson({"info", "nyc.plotix", "--json"})["agents"].toArray();
    ASSERT_EQ(agents.size(), 3);
    for (const QJsonValue& agent : agents)
        expectTableEqualsInfo(agent.toObject());
}

}  // namespace plotix
