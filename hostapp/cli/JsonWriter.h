#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <rapidjson/ostreamwrapper.h>
#include <rapidjson/prettywriter.h>

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>

/// JSON, written member by member in the order of the calls; the library escapes, indents and closes. Borrows the
/// stream; one thread.
///
/// Numbers are written as the shortest text that reads back to the same bits. JSON has no infinities and no NaN: they
/// become ±1e999, which readers take for an infinity, and null.
namespace plotix {

class JsonWriter {
public:
    explicit JsonWriter(std::ostream& out);

    void beginObject();
    void beginArray(const char* key);
    void endObject();
    void endArray();

    void text(const char* key, const QString& text);
    void texts(const char* key, const QStringList& texts);
    void count(const char* key, std::size_t count);
    void number(const char* key, double number);
    void absent(const char* key);  ///< null

private:
    using Stream = rapidjson::BasicOStreamWrapper<std::ostream>;

    void put(const QString& text);

    Stream m_stream;
    rapidjson::PrettyWriter<Stream> m_writer;
};

}  // namespace plotix
