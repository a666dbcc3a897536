#include "hostapp/exchange/ColumnHeader.h"

#include "hostapp/core/Units.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

namespace plotix {

namespace {

/// Units that may follow a name after no more than a blank. Shorter ones, or those that are words, may belong to the
/// name: "Zone A" is no current.
bool isPlainlyUnit(const QString& text)
{
    static const QRegularExpression signs(
        QStringLiteral("[°%²³µ‰Ω]|^(?:k?m|[lL]|m3|k?g|k?W|k?Wh|mm|ft|mi)/(?:s|h|hr|min|d|m2|m3)$"));
    static const QSet<QString> known = {
        QStringLiteral("kW"),   QStringLiteral("MW"),  QStringLiteral("GW"),   QStringLiteral("mW"),
        QStringLiteral("Wh"),   QStringLiteral("kWh"), QStringLiteral("MWh"),  QStringLiteral("GWh"),
        QStringLiteral("VA"),   QStringLiteral("kVA"), QStringLiteral("kvar"), QStringLiteral("kVAr"),
        QStringLiteral("Pa"),   QStringLiteral("kPa"), QStringLiteral("hPa"),  QStringLiteral("MPa"),
        QStringLiteral("mbar"), QStringLiteral("psi"), QStringLiteral("ppm"),  QStringLiteral("ppb"),
        QStringLiteral("rpm"),  QStringLiteral("Hz"),  QStringLiteral("kHz"),  QStringLiteral("MHz"),
        QStringLiteral("lux"),  QStringLiteral("lx"),  QStringLiteral("mm"),   QStringLiteral("cm"),
        QStringLiteral("km"),   QStringLiteral("kg"),  QStringLiteral("mA"),   QStringLiteral("mV"),
        QStringLiteral("kV"),   QStringLiteral("kJ"),  QStringLiteral("MJ"),   QStringLiteral("GJ"),
        QStringLiteral("mph"),  QStringLiteral("m3"),  QStringLiteral("dB"),   QStringLiteral("degC"),
        QStringLiteral("degF")};
    return signs.match(text).hasMatch() || known.contains(text);
}

/// "Temp, °C" and "Temp, °C (S/N: 1234)"; nothing where no unit stands behind the comma.
std::optional<ColumnHeader> splitAtComma(const QString& header)
{
    static const QRegularExpression behindComma(
        QStringLiteral("^(.*\\S)\\s*,\\s*([^,()\\[\\]]+?)\\s*(?:\\([^()]*\\))?$"));
    const QRegularExpressionMatch match = behindComma.match(header);
    if (!match.hasMatch())
        return {};
    const std::optional<QString> unit = Units::shared()->normalise(match.captured(2));
    return unit ? std::optional(ColumnHeader{match.captured(1), *unit}) : std::nullopt;
}

/// "Leistung AC / W", as standards write a quantity in its unit. A single letter behind another one may be a choice:
/// "Phase A / B".
std::optional<ColumnHeader> splitAtSlash(const QString& header)
{
    static const QRegularExpression behindSlash(QStringLiteral("^(.*\\S)\\s+/\\s*(\\S+)$"));
    static const QRegularExpression letter(QStringLiteral("(?:^|\\s)\\w$"));
    static const QString letters = QStringLiteral("WVAKJhsmgtL");
    const QRegularExpressionMatch match = behindSlash.match(header);
    const QString text = match.captured(2);
    const bool isChoice = text.size() == 1 && text.front().isLetter() &&
                          (!letters.contains(text) || letter.match(match.captured(1)).hasMatch());
    if (!match.hasMatch() || isChoice)
        return {};
    const std::optional<QString> unit = Units::shared()->normalise(text);
    return unit ? std::optional(ColumnHeader{match.captured(1), *unit}) : std::nullopt;
}

/// "Feuchte % r.F.": a unit with a blank in it.
std::optional<ColumnHeader> splitAtPercent(const QString& header)
{
    static const QRegularExpression percent(QStringLiteral("^(.*\\S)\\s+(%\\s*r\\.?\\s?[fh]\\.?)$"),
                                            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = percent.match(header);
    return match.hasMatch() ? std::optional(ColumnHeader{match.captured(1), QStringLiteral("%")}) : std::nullopt;
}

/// "Power kW" and "Wirkleistung in kW".
std::optional<ColumnHeader> splitAtBlank(const QString& header)
{
    static const QRegularExpression lastWord(QStringLiteral("^(.*\\S)\\s+(\\S+)$"));
    const QRegularExpressionMatch match = lastWord.match(header);
    if (!match.hasMatch() || !isPlainlyUnit(match.captured(2)))
        return {};
    const std::optional<QString> unit = Units::shared()->normalise(match.captured(2));
    if (!unit)
        return {};
    static const QRegularExpression preposition(QStringLiteral("\\s+(?:in|en)$"));
    return ColumnHeader{match.captured(1).remove(preposition), *unit};
}

ColumnHeader splitWithoutBrackets(const QString& header)
{
    if (const std::optional<ColumnHeader> split = splitAtComma(header))
        return *split;
    if (const std::optional<ColumnHeader> split = splitAtSlash(header))
        return *split;
    if (const std::optional<ColumnHeader> split = splitAtPercent(header))
        return *split;
    return splitAtBlank(header).value_or(ColumnHeader{header, {}});
}

}  // namespace

ColumnHeader splitHeader(const QString& header)
{
    static const QRegularExpression bracketed(QStringLiteral("^(.*\\S)\\s*(?:\\(([^()]*)\\)|\\[([^\\[\\]]*)\\])$"));
    const QRegularExpressionMatch match = bracketed.match(header.trimmed());
    if (!match.hasMatch())
        return splitWithoutBrackets(header.trimmed());
    const QString inside = (match.captured(2) + match.captured(3)).trimmed();
    if (inside.isEmpty())
        return {match.captured(1), {}};
    const std::optional<QString> unit = Units::shared()->normalise(inside);
    static const QRegularExpression slash(QStringLiteral("\\s*/$"));
    return unit ? ColumnHeader{match.captured(1).remove(slash), *unit} : splitWithoutBrackets(header.trimmed());
}

QString joinedHeader(const ColumnHeader& header)
{
    if (!header.unit.isEmpty())
        return QStringLiteral("%1 (%2)").arg(header.name, header.unit);
    const bool isMistakable = splitHeader(header.name).name != header.name;
    return isMistakable ? header.name + QStringLiteral(" ()") : header.name;
}

}  // namespace plotix
