#include "hostapp/exchange/ColumnHeader.h"

#include "hostapp/core/Units.h"

#include <QtCore/QRegularExpression>

namespace plotix {

ColumnHeader splitHeader(const QString& header)
{
    static const QRegularExpression bracketed(QStringLiteral("^(.*\\S)\\s*(?:\\(([^()]*)\\)|\\[([^\\[\\]]*)\\])$"));
    const QRegularExpressionMatch match = bracketed.match(header.trimmed());
    if (!match.hasMatch())
        return {header.trimmed(), {}};
    const QString inside = (match.captured(2) + match.captured(3)).trimmed();
    if (inside.isEmpty())
        return {match.captured(1), {}};
    const std::optional<QString> unit = Units::shared()->normalise(inside);
    if (!unit)
        return {header.trimmed(), {}};
    return {match.captured(1), *unit};
}

QString joinedHeader(const ColumnHeader& header)
{
    if (!header.unit.isEmpty())
        return QStringLiteral("%1 (%2)").arg(header.name, header.unit);
    const bool isMistakable = splitHeader(header.name).name != header.name;
    return isMistakable ? header.name + QStringLiteral(" ()") : header.name;
}

}  // namespace plotix
