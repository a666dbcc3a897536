#include "hostapp/core/Localization.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <gtest/gtest.h>

/// Every text people see stands in the German table: read out of the sources, so that a new text without one is
/// noticed.
namespace {

const QString kLiteral = QStringLiteral(R"x("((?:[^"\\]|\\.)*)")x");

QString contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// The literals of one expression, joined as the compiler joins them.
QString joined(const QString& literals)
{
    QString text;
    QRegularExpressionMatchIterator one = QRegularExpression(kLiteral).globalMatch(literals);
    while (one.hasNext())
        text += one.next().captured(1);
    return text.replace(QLatin1String("\\n"), QLatin1String("\n")).replace(QLatin1String("\\\""), QLatin1String("\""));
}

void collect(const QString& source, const QString& pattern, int group, QStringList& texts)
{
    QRegularExpressionMatchIterator found = QRegularExpression(pattern).globalMatch(source);
    while (found.hasNext())
        texts << joined(found.next().captured(group));
}

QStringList textsOfSources(const QString& folder)
{
    QStringList texts;
    for (const QString& name : QDir(folder).entryList({"*.cpp", "*.h"}, QDir::Files)) {
        const QString source = contentsOf(folder + QLatin1Char('/') + name);
        collect(source,
                QStringLiteral(R"x(\b(?:tr|translated|localized|localizedString)\(\s*((?:%1\s*)+))x").arg(kLiteral), 1,
                texts);
        collect(source,
                QStringLiteral(R"x(\b(?:translate|QT_TRANSLATE_NOOP)\(\s*%1\s*,\s*((?:%1\s*)+))x").arg(kLiteral), 2,
                texts);
    }
    return texts;
}

QStringList textsOfInterfaces(const QString& folder)
{
    QStringList texts;
    for (const QString& name : QDir(folder).entryList({"*.ui"}, QDir::Files)) {
        QRegularExpressionMatchIterator found = QRegularExpression(QStringLiteral("<string>([^<]+)</string>"))
                                                    .globalMatch(contentsOf(folder + QLatin1Char('/') + name));
        while (found.hasNext())
            texts << found.next().captured(1).replace(QLatin1String("&amp;"), QLatin1String("&"));
    }
    return texts;
}

class GermanTest : public testing::Test {
protected:
    void expectAllIn(const QStringList& texts, int atLeast)
    {
        const plotix::TextTable table(plotix::textTableOf(QStringLiteral("de")));
        EXPECT_GE(texts.size(), atLeast);
        for (const QString& text : texts)
            EXPECT_TRUE(text.isEmpty() || table.contains(text)) << "no German for: " << text.toStdString();
    }
    const QString root = qEnvironmentVariable("PLOTIX_TEST_SOURCE_DIR");
};

TEST_F(GermanTest, WindowsSpeakIt)
{
    expectAllIn(textsOfSources(root + QStringLiteral("/hostapp/window")), 100);
}

TEST_F(GermanTest, RestOfTheProgramSpeaksIt)
{
    QStringList texts;
    for (const char* room : {"app", "document", "exchange", "print", "web", "site", "live", "demo"})
        texts << textsOfSources(root + QStringLiteral("/hostapp/") + QLatin1String(room));
    expectAllIn(texts, 40);
}

TEST_F(GermanTest, AlertsAndMessagesOfTheTrendViewHaveOne)
{
    // Given as they stand by the plug-in, looked up where the host shows them.
    expectAllIn({"Illegal Date Range", "The \"from\" date must be less than the \"to\" date.", "Database Access Error",
                 "Returned object was malformed.", "No Properties Available to Plot",
                 "No Data Available for Date Range", "Remove", "shown", "hidden"},
                9);
}

TEST_F(GermanTest, TrendViewSpeaksIt)
{
    expectAllIn(textsOfSources(root + QStringLiteral("/plugins/PlotixPlugIn")), 5);
    expectAllIn(textsOfInterfaces(root + QStringLiteral("/plugins/PlotixPlugIn/resources")), 10);
}

TEST_F(GermanTest, TitlesInTablesOfDataHaveOne)
{
    // Quick ranges and table headings are looked up from rows of data.
    QStringList texts;
    const QString folder = root + QStringLiteral("/plugins/PlotixPlugIn/");
    collect(contentsOf(folder + QStringLiteral("QuickRangeMenu.cpp")),
            QStringLiteral(R"x(\{(%1), &Controller)x").arg(kLiteral), 1, texts);
    EXPECT_EQ(texts.size(), 13);
    collect(contentsOf(folder + QStringLiteral("InfoTableModel.cpp")),
            QStringLiteral(R"x(\{"\w+", (%1), Qt::)x").arg(kLiteral), 1, texts);
    expectAllIn(texts, 21);
}

TEST_F(GermanTest, PlaceholdersAreAllThere)
{
    const plotix::TextTable table(plotix::textTableOf(QStringLiteral("de")));
    for (const QString& source : table.sources())
        for (const char* place : {"%1", "%2", "%3", "%4", "%5", "%n"}) {
            const QString german = table.translate("", source.toUtf8().constData(), nullptr, 2);
            EXPECT_EQ(source.contains(QLatin1String(place)), german.contains(QLatin1String(place)))
                << source.toStdString();
        }
}

}  // namespace
