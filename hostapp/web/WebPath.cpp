#include "hostapp/web/WebPath.h"

#include <QtCore/QList>
#include <QtCore/QStringDecoder>

#include <algorithm>

namespace plotix {

namespace {

int hexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::optional<QString> segmentFrom(const QByteArray& text)
{
    const std::optional<QString> segment = percentDecodedOnce(text);
    const bool leavesItsPlace = !segment || segment->contains(QLatin1Char('/')) ||
                                segment->contains(QLatin1Char('\\')) || *segment == QLatin1String(".") ||
                                *segment == QLatin1String("..");
    return leavesItsPlace ? std::nullopt : segment;
}

/// The segments that are not empty; nothing when one of them is not to be trusted.
std::optional<QList<QString>> segmentsOf(const QByteArray& path)
{
    QList<QString> segments;
    for (const QByteArray& text : path.split('/')) {
        if (text.isEmpty())
            continue;
        const auto segment = segmentFrom(text);
        if (!segment)
            return std::nullopt;
        segments << *segment;
    }
    return segments;
}

WebPath::Kind kindOfFile(const QString& name)
{
    if (name == QLatin1String("style.css"))
        return WebPath::Kind::Style;
    if (name == QLatin1String("icon.svg") || name == QLatin1String("favicon.ico"))
        return WebPath::Kind::Icon;
    return WebPath::Kind::Nothing;
}

}  // namespace

std::optional<QString> percentDecodedOnce(const QByteArray& text)
{
    QByteArray bytes;
    for (qsizetype index = 0; index < text.size(); ++index) {
        char byte = text[index];
        if (byte == '%') {
            const int high = index + 2 < text.size() ? hexDigit(text[index + 1]) : -1;
            const int low = index + 2 < text.size() ? hexDigit(text[index + 2]) : -1;
            if (high < 0 || low < 0)
                return std::nullopt;
            byte = static_cast<char>(high * 16 + low);
            index += 2;
        }
        bytes += byte;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder(bytes);
    const bool hasControl = std::any_of(decoded.begin(), decoded.end(), [](QChar one) { return one.unicode() < 0x20; });
    return decoder.hasError() || hasControl ? std::nullopt : std::optional(decoded);
}

WebPath webPathFrom(const QByteArray& path)
{
    const auto segments = segmentsOf(path);
    if (!path.startsWith('/') || !segments)
        return {};
    if (segments->isEmpty())
        return {WebPath::Kind::Index, {}};
    if (segments->size() == 1)
        return {kindOfFile(segments->first()), {}};
    if (segments->first() != QLatin1String("sites"))
        return {};
    if (segments->size() > 2)
        return {WebPath::Kind::Rendering, segments->at(1)};
    return {path.endsWith('/') ? WebPath::Kind::Site : WebPath::Kind::SiteBare, segments->at(1)};
}

QByteArray pathOf(const QByteArray& requestTarget)
{
    const QByteArray target = requestTarget.split('#').first();
    return target.split('?').first();
}

QByteArray queryOf(const QByteArray& requestTarget)
{
    const QByteArray target = requestTarget.split('#').first();
    const qsizetype sign = target.indexOf('?');
    return sign < 0 ? QByteArray() : target.mid(sign + 1);
}

std::optional<QString> queryValue(const QByteArray& query, const QByteArray& name)
{
    for (const QByteArray& pair : query.split('&'))
        if (pair.startsWith(name + '='))
            return percentDecodedOnce(pair.mid(name.size() + 1));
    return std::nullopt;
}

}  // namespace plotix
