#include "plugins/PlotixPlugIn/host/PngImage.h"
#include "tests/plugins/PlotixPlugIn/reading/line/ReadTrendFixture.h"
#include "tests/support/paging/PagedRecords.h"

#include <QtCore/QDebug>
#include <QtGui/QClipboard>

#include <cmath>

// A trend of paged records beside one of the same records in memory: the same on screen, on paper and in every answer.

namespace {

using namespace plotix;

class PagedTrendTest : public ReadTrendFixture, public testing::WithParamInterface<unsigned> {
protected:
    /// What a reader of a trend gets to see, by what it was asked; pictures as files.
    using Answers = std::vector<std::pair<std::string, QVariant>>;

    PagedTrendTest() : m_random(GetParam()) {}
    ~PagedTrendTest() override { releaseTrend(); }

    KTVRecordDictionaryPtr someRecords(std::size_t count)
    {
        const double odd[] = {std::nan(""), HUGE_VAL, -0.0, 0.0, -HUGE_VAL};
        const bool isOdd = m_random() % 2 == 0;
        fakehost::RecordBuilder builder = records();
        double time = kFrom, air = 20;
        for (std::size_t index = 0; index < count; ++index) {
            time += m_random() % 300 == 0 ? 40 : m_random() % 5 == 0 ? 0.25 : 1;
            air += std::normal_distribution<double>()(m_random) / 3;
            builder.at(time);
            if (m_random() % 50 == 0)
                builder.invalid("airTemperature", air);
            else
                builder.value("airTemperature", isOdd && m_random() % 99 == 0 ? odd[m_random() % 5] : air);
            builder.value("pressure", m_random() % 700 == 0 ? 1100 : std::round(1000 + 3 * std::sin(time / 60)));
            if (m_random() % 3 != 0)
                builder.value("wind", 0.1 * double(m_random() % 100));
        }
        m_from = kFrom;
        m_to = time;
        return builder.build();
    }

    void show(const KTVRecordDictionaryPtr& shown, const QVariantMap& reading)
    {
        makeTrend({"airTemperature", "pressure", "wind"});
        trend().setReading(reading);
        open();
        answer(shown);
        trend().view()->resize(900, 700);
        trend().view()->show();
        drain();
    }
    void look(const std::string& at)
    {
        drain();
        m_answers.emplace_back(at + ", screen", pngOfImage(trend().hostView()->imageOfLayer()));
        m_answers.emplace_back(at + ", picture", pngOfImage(trend().graphImageWithSize({640, 480}, 1, {})));
    }
    void readTable(const std::string& of)
    {
        trend().copyTable(nullptr);
        m_answers.emplace_back(of + ", table", QGuiApplication::clipboard()->text());
        // Texts, as a NaN equals no other.
        QString report;
        QDebug(&report) << trend().reportContents();
        m_answers.emplace_back(of + ", report", report);
    }
    void zoom(double from, double to)
    {
        const double length = m_to - m_from;
        trend().graph()->defaultPlotSpace()->setXRange({m_from + from * length, (to - from) * length});
    }
    /// Everything that a person does with a trend, one after the other.
    Answers answersOf(const KTVRecordDictionaryPtr& shown, const QVariantMap& reading)
    {
        m_answers.clear();
        show(shown, reading);
        look("at first");
        readTable("at first");
        const std::pair<double, double> views[] = {{0.3, 0.6}, {0.41, 0.43}, {-1, 2}, {0.9, 1}};
        for (const auto& [from, to] : views) {
            zoom(from, to);
            look("zoomed to " + std::to_string(from));
            readTable("zoomed to " + std::to_string(from));
        }
        zoom(0, 1);
        walk();
        property("airTemperature")->setUnit(QStringLiteral("degF"));
        look("in another unit");
        readTable("in another unit");
        property("airTemperature")->setUnit(QStringLiteral("degC"));
        look("in the first unit");
        trend().fitAll(nullptr);
        look("fitted");
        m_answers.emplace_back("svg", trend().graphFile({{"format", "svg"}, {"size", QSizeF(400, 300)}}));
        return m_answers;
    }
    void walk()
    {
        trend().setReading({{"valueLine", QVariantMap{{"shown", true}, {"held", m_from + 0.4 * (m_to - m_from)}}}});
        using Qt::Key;
        for (const Key key : {Qt::Key_Period, Qt::Key_BracketRight, Qt::Key_M, Qt::Key_N, Qt::Key_G, Qt::Key_Comma,
                              Qt::Key_BracketLeft})
            for (const auto modifiers : {Qt::NoModifier, Qt::ShiftModifier}) {
                press(key, modifiers);
                const std::string at = "walk by " + std::to_string(int(key)) + '/' + std::to_string(int(modifiers));
                m_answers.emplace_back(at, part("valueLine").property("time"));
                look(at);
            }
    }
    static std::string shortened(const QVariant& answer) { return answer.toString().left(2000).toStdString(); }
    void expectTheSame(std::size_t count, const QVariantMap& reading, std::size_t budget = kLittle)
    {
        const KTVRecordDictionaryPtr resident = someRecords(count);
        const auto cache = std::make_shared<PageCache>(budget);
        const KTVRecordDictionaryPtr paged = plotix_test::paged(*resident, cache, m_random);
        const Answers one = answersOf(resident, reading);
        const Answers other = answersOf(paged, reading);
        ASSERT_EQ(one.size(), other.size());
        for (std::size_t index = 0; index < one.size(); ++index)
            EXPECT_TRUE(one[index].second == other[index].second) << one[index].first << ", seed " << GetParam() << '\n'
                                                                  << shortened(one[index].second) << '\n'
                                                                  << shortened(other[index].second);
    }
    QVariantMap everything() const
    {
        const QStringList columns{
            "minimumTime", "maximumTime", "timeWeightedMean", "median",       "deviation", "range", "first",
            "last",        "sum",         "integral",         "percentile95", "coverage",  "gaps"};
        return {{"readableLabels", true},
                {"brokenLines", true},
                {"missing", QVariantMap{{"stretches", true}, {"strip", true}}},
                {"overview", QVariantMap{{"shown", true}}},
                {"marks", QVariantMap{{"a", kFrom + 100}, {"b", kFrom + 900}}},
                {"statistics", QVariantMap{{"offered", true}, {"over", "visible"}, {"columns", columns}}}};
    }

    static constexpr std::size_t kLittle = 600'000;  // bytes: a page of a few columns
    std::mt19937 m_random;
    double m_from = 0, m_to = 0;
    Answers m_answers;
};

TEST_P(PagedTrendTest, WithoutChoicesNobodySeesADifference)
{
    expectTheSame(1000, {}, 0);
}

TEST_P(PagedTrendTest, WithEverythingChosenNobodySeesADifference)
{
    expectTheSame(3000, everything());
}

TEST_P(PagedTrendTest, InLanesNobodySeesADifference)
{
    QVariantMap reading = everything();
    reading["arrangement"] = QVariantMap{{"kind", "lane-per-property"},
                                         {"lanes", QVariantMap{{"airTemperature", QVariantMap{{"fit", "robust"}}},
                                                               {"wind", QVariantMap{{"scale", "logarithmic"}}}}}};
    expectTheSame(3000, reading);
}

INSTANTIATE_TEST_SUITE_P(Records, PagedTrendTest, testing::Range(1U, 4U));

class LongPagedTrendTest : public PagedTrendTest {};

TEST_P(LongPagedTrendTest, OfManyPagesNobodySeesADifference)
{
    expectTheSame(80'000, everything());
}

INSTANTIATE_TEST_SUITE_P(Records, LongPagedTrendTest, testing::Values(7U));

}  // namespace
