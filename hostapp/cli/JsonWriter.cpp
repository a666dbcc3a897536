#include "hostapp/cli/JsonWriter.h"

#include "hostapp/exchange/ExactText.h"

#include <cmath>

namespace plotix {

namespace {

std::string jsonNumber(double value)
{
    if (std::isnan(value))
        return "null";
    if (std::isinf(value))
        return value > 0 ? "1e999" : "-1e999";
    return exactNumber(value);
}

}  // namespace

JsonWriter::JsonWriter(std::ostream& out) : m_stream(out), m_writer(m_stream)
{
    m_writer.SetIndent(' ', 2);
}

void JsonWriter::beginObject()
{
    m_writer.StartObject();
}

void JsonWriter::beginArray(const char* key)
{
    m_writer.Key(key);
    m_writer.StartArray();
}

void JsonWriter::endObject()
{
    m_writer.EndObject();
    if (m_writer.IsComplete())
        m_stream.Put('\n');
}

void JsonWriter::endArray()
{
    m_writer.EndArray();
}

void JsonWriter::text(const char* key, const QString& text)
{
    m_writer.Key(key);
    put(text);
}

void JsonWriter::texts(const char* key, const QStringList& texts)
{
    beginArray(key);
    for (const QString& text : texts)
        put(text);
    endArray();
}

void JsonWriter::count(const char* key, std::size_t count)
{
    m_writer.Key(key);
    m_writer.Uint64(count);
}

void JsonWriter::number(const char* key, double number)
{
    // As text: the library's own digits are not always the fewest.
    const std::string digits = jsonNumber(number);
    m_writer.Key(key);
    m_writer.RawValue(digits.data(), digits.size(), rapidjson::kNumberType);
}

void JsonWriter::absent(const char* key)
{
    m_writer.Key(key);
    m_writer.Null();
}

void JsonWriter::put(const QString& text)
{
    const std::string utf8 = text.toStdString();
    m_writer.String(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
}

}  // namespace plotix
