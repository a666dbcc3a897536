#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>

/// Keyed archiving: objects write named values and read them back; missing keys are no error.
///
/// Plain values travel as QVariant of: bool, int, qint64, double, QString, QByteArray, QColor by its
/// "#aarrggbb" text, QVariantList and QVariantMap of these. Doubles and floats come back bit for bit.
/// Main thread only.
namespace plotix {

class KeyedEncoder {
public:
    virtual ~KeyedEncoder() = default;

    virtual void encodeBool(const QString& key, bool value) = 0;
    virtual void encodeValue(const QString& key, const QVariant& value) = 0;

    /// Writes an object under `key`: `write` receives an encoder whose keys belong to that object alone.
    virtual void encodeObject(const QString& key, const std::function<void(KeyedEncoder&)>& write) = 0;
};

class KeyedDecoder {
public:
    virtual ~KeyedDecoder() = default;

    virtual bool containsKey(const QString& key) const = 0;
    virtual bool decodeBool(const QString& key) const = 0;       ///< false when the key is missing
    virtual QVariant decodeValue(const QString& key) const = 0;  ///< invalid when the key is missing

    /// Reads the object under `key`; `read` is not called, and false answered, when there is none.
    virtual bool decodeObject(const QString& key, const std::function<void(KeyedDecoder&)>& read) const = 0;
};

}  // namespace plotix
