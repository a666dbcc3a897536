#include "hostapp/exchange/UnpackedBytes.h"

#include "hostapp/exchange/ImportFinding.h"

#include <QtCore/QStringDecoder>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cstring>
#include <zlib.h>

namespace plotix {

namespace {

constexpr qint64 kChunk = 1 << 16;  // bytes read at once

class Unpacked : public QIODevice {
public:
    explicit Unpacked(QIODevice& packed) : m_packed(packed)
    {
        constexpr int kGzip = 16;
        inflateInit2(&m_stream, MAX_WBITS + kGzip);
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    ~Unpacked() override { inflateEnd(&m_stream); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 room) override
    {
        m_stream.next_out = reinterpret_cast<Bytef*>(data);
        m_stream.avail_out = static_cast<uInt>(std::min<qint64>(room, 1 << 30));
        const uInt wanted = m_stream.avail_out;
        while (m_stream.avail_out > 0 && fill())
            unpack();
        return static_cast<qint64>(wanted - m_stream.avail_out);
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    /// False at the end of the file.
    bool fill()
    {
        if (m_stream.avail_in > 0)
            return true;
        m_input = m_packed.read(kChunk);
        m_stream.next_in = reinterpret_cast<Bytef*>(m_input.data());
        m_stream.avail_in = static_cast<uInt>(m_input.size());
        if (m_input.isEmpty() && !m_isBetween)
            refuse("unexpected end");
        return !m_input.isEmpty();
    }

    void unpack()
    {
        m_isBetween = false;
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        if (result == Z_STREAM_END) {
            m_isBetween = true;  // another one may follow
            inflateReset(&m_stream);
        } else if (result != Z_OK && result != Z_BUF_ERROR) {
            refuse(m_stream.msg == nullptr ? "" : m_stream.msg);
        }
    }

    [[noreturn]] static void refuse(const char* reason)
    {
        throw ImportFailure({.what = ImportFinding::What::BrokenArchive, .text = QString::fromLatin1(reason)});
    }

    QIODevice& m_packed;  // borrowed
    QByteArray m_input;
    z_stream m_stream{};
    bool m_isBetween = false;
};

class Narrow : public QIODevice {
public:
    Narrow(QIODevice& wide, bool isBigEndian)
        : m_wide(wide), m_decoder(isBigEndian ? QStringDecoder::Utf16BE : QStringDecoder::Utf16LE)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 room) override
    {
        while (m_text.isEmpty()) {
            const QByteArray bytes = m_wide.read(kChunk);
            if (bytes.isEmpty())
                return 0;
            const QString text = m_decoder(bytes);
            m_text = text.toUtf8();
        }
        const qint64 count = std::min<qint64>(room, m_text.size());
        std::memcpy(data, m_text.constData(), static_cast<std::size_t>(count));
        m_text.remove(0, count);
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QIODevice& m_wide;  // borrowed
    QStringDecoder m_decoder;
    QByteArray m_text;  // decoded and not yet read
};

}  // namespace

std::unique_ptr<QIODevice> unpackedBytes(QIODevice& packed)
{
    return std::make_unique<Unpacked>(packed);
}

qint64 unpackedSize(QIODevice& packed)
{
    constexpr qint64 kLast = 4;
    if (packed.size() < kLast || !packed.seek(packed.size() - kLast))
        return 0;
    const QByteArray last = packed.read(kLast);
    packed.seek(0);
    return last.size() == kLast ? qFromLittleEndian<quint32>(last.constData()) : 0;
}

std::unique_ptr<QIODevice> narrowBytes(QIODevice& wide, bool isBigEndian)
{
    return std::make_unique<Narrow>(wide, isBigEndian);
}

}  // namespace plotix
