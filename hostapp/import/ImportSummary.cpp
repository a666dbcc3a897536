#include "hostapp/import/Importer.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTextStream>
#include <QtCore/QTimeZone>

#include <cmath>

namespace plotix {

namespace {

QString counted(std::size_t count, const QString& one, const QString& many)
{
    const QString number = QLocale(QLocale::English).toString(static_cast<qulonglong>(count));
    return QStringLiteral("%1 %2").arg(number, count == 1 ? one : many);
}

QString rows(std::size_t count)
{
    return counted(count, QStringLiteral("row"), QStringLiteral("rows"));
}

/// To the second; times outside the calendar as their number.
QString moment(double seconds)
{
    if (!(std::abs(seconds) < 2.5e11))
        return QString::number(seconds);
    const auto whole = static_cast<qint64>(std::floor(seconds));
    return QDateTime::fromSecsSinceEpoch(whole, Qt::UTC).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss 'UTC'"));
}

void writeColumns(QTextStream& text, const ImportSummary& summary)
{
    for (const ImportSummary::Column& column : summary.columns) {
        text << "  " << column.propertyName << ": " << column.name;
        if (!column.unit.isEmpty())
            text << " (" << column.unit << ')';
        text << ", " << counted(column.valid, QStringLiteral("value"), QStringLiteral("values")) << '\n';
    }
}

void writeCounts(QTextStream& text, const ImportSummary& summary)
{
    if (summary.otherRows > 0)
        text << rows(summary.otherRows) << " with another text in the --where column passed over.\n";
    if (summary.unorderedTimes > 0)
        text << rows(summary.unorderedTimes) << " earlier than the row before; sorted by time.\n";
    if (summary.repeatedTimes > 0)
        text << rows(summary.repeatedTimes) << " at a time that comes again later; the last one was kept.\n";
    if (summary.badRows > 0)
        text << rows(summary.badRows) << " that did not parse passed over, the first: " << summary.firstBadRow << ".\n";
    if (!summary.leftOut.isEmpty())
        text << "Left out, without a single number: " << summary.leftOut.join(QStringLiteral(", ")) << ".\n";
}

}  // namespace

QString describeImport(const ImportSummary& summary)
{
    QString result;
    QTextStream text(&result);
    for (const QString& note : summary.notes)
        text << note << '\n';
    text << counted(summary.records, QStringLiteral("record"), QStringLiteral("records")) << " from "
         << QFileInfo(summary.file).fileName() << " stored for " << summary.agent << " in " << summary.site
         << (summary.createdSite ? " (new)" : "");
    if (summary.first && summary.last)
        text << ", " << moment(*summary.first) << " to " << moment(*summary.last);
    text << ".\n";
    writeColumns(text, summary);
    writeCounts(text, summary);
    text.flush();
    return result;
}

}  // namespace plotix
