#include "hostapp/cli/JsonWriter.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace plotix {

namespace {

class JsonWriterTest : public testing::Test {
protected:
    JsonWriterTest() { m_writer.beginObject(); }

    std::string written()
    {
        m_writer.endObject();
        return m_out.str();
    }
    QJsonObject read()
    {
        const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(written()));
        EXPECT_TRUE(document.isObject()) << m_out.str();
        return document.object();
    }

    std::ostringstream m_out;
    JsonWriter m_writer{m_out};
};

TEST_F(JsonWriterTest, MembersStandInTheOrderOfTheCalls)
{
    m_writer.text("site", "Hill");
    m_writer.count("agents", 2);
    m_writer.absent("last");
    EXPECT_EQ(written(), "{\n  \"site\": \"Hill\",\n  \"agents\": 2,\n  \"last\": null\n}\n");
}

TEST_F(JsonWriterTest, NumbersHaveTheFewestDigitsThatBringThemBack)
{
    m_writer.number("a", 0.1);
    m_writer.number("b", 1000);
    m_writer.number("c", -0.0);
    m_writer.number("d", 5e-324);
    const std::string text = written();
    for (const char* member : {"\"a\": 0.1,", "\"b\": 1000,", "\"c\": -0,", "\"d\": 5e-324\n"})
        EXPECT_NE(text.find(member), std::string::npos) << member << " in " << text;
}

TEST_F(JsonWriterTest, HasAnAnswerForNumbersJsonLacks)
{
    m_writer.number("a", std::numeric_limits<double>::quiet_NaN());
    m_writer.number("b", -std::numeric_limits<double>::infinity());
    EXPECT_EQ(written(), "{\n  \"a\": null,\n  \"b\": -1e999\n}\n");
}

TEST_F(JsonWriterTest, CountsKeepEveryDigit)
{
    m_writer.count("most", std::numeric_limits<std::size_t>::max());
    EXPECT_EQ(written(), "{\n  \"most\": 18446744073709551615\n}\n");
}

TEST_F(JsonWriterTest, TextsComeBackAsTheyWere)
{
    const QString odd = QStringLiteral("a\"b\\c\nd ° \x01 %1");
    m_writer.text("text", odd);
    m_writer.texts("list", {odd, QString()});
    const QJsonObject object = read();
    EXPECT_EQ(object["text"].toString(), odd);
    EXPECT_EQ(object["list"].toArray(), QJsonArray({odd, QString()}));
}

}  // namespace

}  // namespace plotix
