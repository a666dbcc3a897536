#include "hostapp/exchange/formats/delimited/TextReader.h"

#include "hostapp/exchange/DecodedText.h"
#include "tests/hostapp/exchange/FindingPrinter.h"

#include <QtCore/QBuffer>

#include <gtest/gtest.h>

namespace plotix {

namespace {

using Rows = std::vector<std::vector<std::string>>;

class TextReaderTest : public testing::Test {
protected:
    Rows cut(QByteArray bytes, const TextFormat& format = {}, std::size_t bufferSize = 16)
    {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        TextReader reader(buffer, format, bufferSize);
        TextRecord record;
        Rows rows;
        m_lines.clear();
        while (reader.next(record)) {
            rows.emplace_back(record.fields.begin(), record.fields.end());
            m_lines.push_back(record.line);
        }
        m_bytesRead = reader.bytesRead();
        return rows;
    }

    std::vector<qint64> m_lines;
    qint64 m_bytesRead = 0;
};

struct CutCase {
    const char* name;
    QByteArray text;
    char delimiter;
    Rows rows;
};

class TextReaderCuts : public TextReaderTest, public testing::WithParamInterface<CutCase> {};

TEST_P(TextReaderCuts, IntoFields)
{
    const TextFormat format{GetParam().delimiter, '\n'};
    EXPECT_EQ(cut(GetParam().text, format, 1 << 16), GetParam().rows);
    EXPECT_EQ(cut(GetParam().text, format, 16), GetParam().rows) << "with a buffer smaller than the file";
}

INSTANTIATE_TEST_SUITE_P(
    Forms, TextReaderCuts,
    testing::Values(CutCase{"Plain", "a,b\n1,2\n", ',', {{"a", "b"}, {"1", "2"}}},
                    CutCase{"WithoutLastLineBreak", "a,b\n1,2", ',', {{"a", "b"}, {"1", "2"}}},
                    CutCase{"ReturnAndLineFeed", "a,b\r\n1,\"2\"\r\n", ',', {{"a", "b"}, {"1", "2"}}},
                    CutCase{"ByteOrderMark",
                            "\xEF\xBB\xBF"
                            "a,b\n",
                            ',',
                            {{"a", "b"}}},
                    CutCase{"EmptyFields", ",\n1,\n", ',', {{"", ""}, {"1", ""}}},
                    CutCase{"Semicolons", "a;1,5\n", ';', {{"a", "1,5"}}},
                    CutCase{"Tabs", "a\t\tb\n", '\t', {{"a", "", "b"}}},
                    CutCase{"BlanksAround", " a , \"b\" \n", ',', {{"a", "b"}}},
                    CutCase{"QuotedDelimiter", "\"a,b\",c\n", ',', {{"a,b", "c"}}},
                    CutCase{"DoubledQuotes", "\"say \"\"hi\"\"\",c\n", ',', {{"say \"hi\"", "c"}}},
                    CutCase{"LineBreakInside", "\"a\nb\",c\nd,e\n", ',', {{"a\nb", "c"}, {"d", "e"}}},
                    CutCase{"QuoteInTheMiddle", "5\" pipe,c\n", ',', {{"5\" pipe", "c"}}},
                    CutCase{"TextBehindTheQuote", "\"5\" inch,c\n", ',', {{"5 inch", "c"}}},
                    CutCase{"QuotedNothing", "\"\",c\n", ',', {{"", "c"}}},
                    CutCase{"BlankLines", "\na,b\n\n\r\n1,2\n", ',', {{"a", "b"}, {"1", "2"}}},
                    CutCase{"Nothing", "", ',', {}}),
    [](const auto& row) { return row.param.name; });

TEST_F(TextReaderTest, CountsLinesInsideQuotationMarks)
{
    cut("a\n\"b\nb\"\n\nc\n");
    EXPECT_EQ(m_lines, (std::vector<qint64>{1, 2, 5}));
}

TEST_F(TextReaderTest, TellsHowManyBytesItHasRead)
{
    const QByteArray text = "\xEF\xBB\xBF"
                            "aaaa,bbbbbbbbbbbbbbbbbbbbbbbb\r\n\"c\",d\n";
    cut(text);
    EXPECT_EQ(m_bytesRead, text.size());
}

TEST_F(TextReaderTest, FilesMayBreakLinesWithReturnsAlone)
{
    EXPECT_EQ(cut("a,b\r1,2\r", {',', '\r'}), (Rows{{"a", "b"}, {"1", "2"}}));
}

TEST_F(TextReaderTest, NamesTheLineOfAQuotationMarkThatIsNeverClosed)
{
    EXPECT_EQ(findingOf([this] { cut("a,b\n1,\"2\n3,4\n"); }),
              (ImportFinding{.what = ImportFinding::What::UnclosedQuotation, .line = 2}));
}

TEST_F(TextReaderTest, LongFieldsGrowTheBuffer)
{
    const QByteArray field(5000, 'x');
    const Rows rows = cut(field + ",\"" + field + "\"\n");
    EXPECT_EQ(rows, (Rows{{field.toStdString(), field.toStdString()}}));
}

TEST(DecodedText, IsUtf8OrElseLatin1)
{
    EXPECT_EQ(decodedText("\xC2\xB0"
                          "C"),
              QStringLiteral("°C"));
    EXPECT_EQ(decodedText("\xB0"
                          "C"),
              QStringLiteral("°C"));
    EXPECT_EQ(decodedText(""), QString());
}

}  // namespace

}  // namespace plotix
