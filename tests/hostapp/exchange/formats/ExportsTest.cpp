#include "hostapp/document/RecordKeeping.h"
#include "hostapp/document/SiteDocument.h"
#include "hostapp/exchange/formats/FileExchange.h"
#include "tests/hostapp/exchange/FindingPrinter.h"
#include "tests/support/PinnedZone.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimeZone>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

/// Files as programs and people export them, read as a user would: without a word about them, or with the option that
/// the refusal asks for. What is in them stands in tests/data/exports/manifest.json, computed apart from our reading.
namespace plotix {

namespace {

using What = ImportFinding::What;

QString folder()
{
    return QStringLiteral(PLOTIX_SOURCE_DIR "/tests/data/exports/");
}

QJsonArray manifest()
{
    QFile file(folder() + QStringLiteral("manifest.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

ImportOptions optionsOf(const QJsonObject& said)
{
    ImportOptions options;
    options.timeZone = said[QStringLiteral("zone")].toString();
    options.sheet = said[QStringLiteral("sheet")].toString();
    options.timeColumn = said[QStringLiteral("time")].toString();
    if (said.contains(QStringLiteral("decimal")))
        options.decimal =
            said[QStringLiteral("decimal")] == QStringLiteral("comma") ? DecimalSign::Comma : DecimalSign::Point;
    if (said.contains(QStringLiteral("where"))) {
        const QStringList parts = said[QStringLiteral("where")].toString().split(QLatin1Char('='));
        options.where = {{parts[0], parts[1]}};
    }
    if (said.contains(QStringLiteral("quality"))) {
        const QStringList parts = said[QStringLiteral("quality")].toString().split(QLatin1Char('='));
        options.quality = {{parts[0], parts[1]}};
        options.badWords = {said[QStringLiteral("bad")].toString()};
    }
    return options;
}

What refusal(const QString& name)
{
    static const std::map<QString, What> names = {{QStringLiteral("DecimalMarkUnknown"), What::DecimalMarkUnknown},
                                                  {QStringLiteral("DateOrderUnknown"), What::DateOrderUnknown},
                                                  {QStringLiteral("ManyRowsAtOneTime"), What::ManyRowsAtOneTime},
                                                  {QStringLiteral("ManyDevices"), What::ManyDevices},
                                                  {QStringLiteral("UnitsDisagree"), What::UnitsDisagree},
                                                  {QStringLiteral("NoTimeColumn"), What::NoTimeColumn},
                                                  {QStringLiteral("AnotherHeader"), What::AnotherHeader},
                                                  {QStringLiteral("PackedFiles"), What::PackedFiles},
                                                  {QStringLiteral("TimesNotInZone"), What::TimesNotInZone},
                                                  {QStringLiteral("NumbersAreNoTimes"), What::NumbersAreNoTimes},
                                                  {QStringLiteral("NotATable"), What::NotATable},
                                                  {QStringLiteral("NotText"), What::NotText}};
    return names.at(name);
}

class Exports : public testing::TestWithParam<int> {
protected:
    void SetUp() override { m_entry = manifest()[GetParam()].toObject(); }

    ImportSummary import()
    {
        return importFile(folder() + m_entry[QStringLiteral("file")].toString(), site(),
                          optionsOf(m_entry[QStringLiteral("options")].toObject()));
    }
    QString site() const { return m_folder.filePath(QStringLiteral("site.plotix")); }

    void read()
    {
        const auto document = SiteDocument::open(site());
        const auto agent = document->agents().front();
        std::vector<RowId> ids;
        for (const auto& property : agent->siteProperties()) {
            ids.push_back(property->description().id);
            m_names << property->description().name;
            m_units << property->description().archivedUnit;
        }
        m_block = recordsOfSite(site())->read(agent->id(), ids, {}, {}).value();
    }

    void expectProperty(const QJsonObject& expected) const
    {
        const QString name = expected[QStringLiteral("name")].toString();
        const qsizetype index = m_names.indexOf(name);
        ASSERT_GE(index, 0) << name.toStdString() << " is not among "
                            << m_names.join(QStringLiteral(", ")).toStdString();
        EXPECT_EQ(m_units[index], expected[QStringLiteral("unit")].toString()) << name.toStdString();
        const RecordBlock::Column& column = m_block.columns[static_cast<std::size_t>(index)];
        int valid = 0;
        for (std::size_t row = 0; row < m_block.times.size(); ++row)
            valid += column.validity.isValid(row) ? 1 : 0;
        EXPECT_EQ(valid, expected[QStringLiteral("valid")].toInt()) << name.toStdString();
        const QJsonArray pairs = expected[QStringLiteral("values")].toArray();
        for (const auto& pair : pairs)
            expectValue(column, pair.toArray()[0].toDouble(), pair.toArray()[1].toDouble(), name, true);
        const QJsonArray marked = expected[QStringLiteral("marked")].toArray();
        for (const auto& pair : marked)
            expectValue(column, pair.toArray()[0].toDouble(), pair.toArray()[1].toDouble(), name, false);
    }

    /// To the microsecond, and to the last but two digits: some files were written with fewer.
    void expectValue(const RecordBlock::Column& column, double time, double value, const QString& name,
                     bool isValid) const
    {
        const auto times = m_block.times.span();
        const auto found =
            std::find_if(times.begin(), times.end(), [time](double other) { return std::abs(other - time) < 1e-6; });
        ASSERT_NE(found, times.end()) << name.toStdString() << " has no record at " << std::to_string(time);
        const auto row = static_cast<std::size_t>(found - times.begin());
        EXPECT_EQ(column.validity.isValid(row), isValid) << name.toStdString() << " at " << std::to_string(time);
        EXPECT_NEAR(column.values[row], value, 1e-9 * std::max(1.0, std::abs(value)))
            << name.toStdString() << " at " << std::to_string(time);
    }

    QJsonObject m_entry;
    QTemporaryDir m_folder;
    RecordBlock m_block;
    QStringList m_names, m_units;

private:
    PinnedZone m_zone{"Europe/Berlin"};
};

TEST_P(Exports, AreReadAsTheyAreMeant)
{
    if (m_entry.contains(QStringLiteral("refused"))) {
        const std::optional<ImportFinding> finding = findingOf([this] { import(); });
        ASSERT_TRUE(finding) << "was read without a question";
        EXPECT_EQ(finding->what, refusal(m_entry[QStringLiteral("refused")].toString()))
            << testing::PrintToString(*finding);
        EXPECT_FALSE(QFile::exists(site()));
        return;
    }
    ImportSummary summary;
    const std::optional<ImportFinding> finding = findingOf([&] { summary = import(); });
    ASSERT_FALSE(finding) << testing::PrintToString(*finding);
    read();
    EXPECT_EQ(m_block.times.size(), static_cast<std::size_t>(m_entry[QStringLiteral("records")].toInt()));
    EXPECT_EQ(summary.badRows, static_cast<std::size_t>(m_entry[QStringLiteral("badRows")].toInt()));
    std::size_t bad = 0;
    for (const ImportSummary::Column& column : summary.columns)
        bad += column.bad;
    EXPECT_EQ(bad, static_cast<std::size_t>(m_entry[QStringLiteral("badCells")].toInt()));
    const QJsonArray properties = m_entry[QStringLiteral("properties")].toArray();
    if (m_entry.contains(QStringLiteral("columns"))) {
        EXPECT_EQ(summary.columns.size(), static_cast<std::size_t>(m_entry[QStringLiteral("columns")].toInt()));
    }
    std::size_t marked = 0, expectedMarked = 0;
    for (const auto& property : properties) {
        expectProperty(property.toObject());
        expectedMarked += static_cast<std::size_t>(property[QStringLiteral("marked")].toArray().size());
    }
    for (const ImportSummary::Column& column : summary.columns)
        marked += column.marked;
    EXPECT_EQ(marked, expectedMarked);
}

TEST(ExportsFolder, HoldsManyKindsOfFiles)
{
    EXPECT_GE(manifest().size(), 40);
}

INSTANTIATE_TEST_SUITE_P(Files, Exports, testing::Range(0, static_cast<int>(manifest().size())), [](const auto& row) {
    QString name = manifest()[row.param].toObject()[QStringLiteral("file")].toString();
    return name.replace(QLatin1Char('.'), QLatin1Char('_')).toStdString();
});

}  // namespace

}  // namespace plotix
