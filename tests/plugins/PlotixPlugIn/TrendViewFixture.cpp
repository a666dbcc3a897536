#include "TrendViewFixture.h"

TrendViewFixture::TrendViewFixture()
{
    m_host.addProperty(QStringLiteral("Air Temperature"), QStringLiteral("degC"), Qt::red);
    m_host.addProperty(QStringLiteral("Pressure"), QStringLiteral("hPa"), Qt::blue);
    m_host.addProperty(QStringLiteral("Wind"), QStringLiteral("m/s"), Qt::green);
}

TrendViewFixture::~TrendViewFixture()
{
    EXPECT_EQ(m_host.log().callsOnOtherThreads(), 0);
}

void TrendViewFixture::makeTrend(const QStringList& keys)
{
    KTVPropertyList tables;
    for (const QString& key : keys)
        tables.push_back(property(key));
    m_trend = KTVPlotixPlugIn::initWithAgent(agent(), &m_host.siteWindowController(), tables, plotix::Date{kFrom},
                                             plotix::Date{kTo});
}

void TrendViewFixture::makeTrendWithoutTables()
{
    m_trend = KTVPlotixPlugIn::initWithAgent(agent(), &m_host.siteWindowController());
}

void TrendViewFixture::openTrend(const QStringList& keys)
{
    makeTrend(keys);
    open();
}

void TrendViewFixture::openTrendWithData()
{
    openTrend();
    answer(twoProperties());
}

KTVRecordDictionaryPtr TrendViewFixture::twoProperties() const
{
    return recordsAt({kFrom, kFrom + 1'800, kTo})
        .column("airTemperature", {20, 22, 21})
        .column("pressure", {30, 32, 31})
        .build();
}

void TrendViewFixture::completeLastFetch(const Answer& answer, Where where)
{
    m_host.archiveManager().answerLast(answer, where);
}

void TrendViewFixture::answer(const KTVRecordDictionaryPtr& records, const std::optional<KTVError>& error)
{
    completeLastFetch({records, error});
    drain();
}

void TrendViewFixture::answerRefresh(const KTVRecordDictionaryPtr& records)
{
    m_trend->refreshPlot();
    answer(records);
}

void TrendViewFixture::refreshFor(double from, double to)
{
    m_trend->acquirePlotFromDate(plotix::Date{from}, plotix::Date{to});
}

QStringList TrendViewFixture::overlayMessages() const
{
    const fakehost::FakeMessageViewController* overlay = m_host.lastMessageViewController();
    return overlay ? overlay->messages() : QStringList();
}

QStringList TrendViewFixture::plotIdentifiers()
{
    QStringList identifiers;
    for (const CPTScatterPlotPtr& plot : m_trend->graph()->allPlots())
        identifiers << plot->identifier();
    return identifiers;
}

fakehost::FakeArchive TrendViewFixture::archived()
{
    fakehost::FakeArchive archive;
    fakehost::FakeEncoder encoder(archive);
    m_trend->encodeWithCoder(encoder);
    return archive;
}

KTVPlotixPlugIn::Ptr TrendViewFixture::decoded(const QVariantMap& values)
{
    fakehost::FakeArchive archive;
    for (auto value = values.begin(); value != values.end(); ++value)
        archive.setValue(value.key(), value.value());
    fakehost::FakeDecoder decoder = m_host.decoder(archive);
    return KTVPlotixPlugIn::initWithCoder(decoder);
}

KTVPlotixPlugIn::Ptr TrendViewFixture::encodedAndDecoded()
{
    const fakehost::FakeArchive archive = archived();
    fakehost::FakeDecoder decoder = m_host.decoder(archive);
    return KTVPlotixPlugIn::initWithCoder(decoder);
}
