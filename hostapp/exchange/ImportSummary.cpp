#include "hostapp/core/Localization.h"
#include "hostapp/exchange/ImportText.h"
#include "hostapp/exchange/Importer.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTextStream>
#include <QtCore/QTimeZone>

#include <cmath>

namespace plotix {

namespace {

/// `count` in words: `one` for 1, else `many` with the number in it.
QString counted(std::size_t count, const QString& one, const QString& many)
{
    return count == 1 ? one : many.arg(QLocale(installedLanguage()).toString(static_cast<qulonglong>(count)));
}

QString rows(std::size_t count)
{
    return counted(count, ImportText::tr("1 row"), ImportText::tr("%1 rows"));
}

QString values(std::size_t count)
{
    return counted(count, ImportText::tr("1 value"), ImportText::tr("%1 values"));
}

QString records(std::size_t count)
{
    return counted(count, ImportText::tr("1 record"), ImportText::tr("%1 records"));
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
        text << ", " << values(column.valid) << '\n';
    }
}

void writeCounts(QTextStream& text, const ImportSummary& summary)
{
    if (summary.otherRows > 0)
        text << ImportText::tr("%1 with another text in the --where column passed over.").arg(rows(summary.otherRows))
             << '\n';
    if (summary.unorderedTimes > 0)
        text << ImportText::tr("%1 earlier than the row before; sorted by time.").arg(rows(summary.unorderedTimes))
             << '\n';
    if (summary.repeatedTimes > 0)
        text << ImportText::tr("%1 at a time that comes again later; the last one was kept.")
                    .arg(rows(summary.repeatedTimes))
             << '\n';
    if (summary.badRows > 0)
        text << ImportText::tr("%1 that did not parse passed over, the first: %2.")
                    .arg(rows(summary.badRows), summary.firstBadRow)
             << '\n';
    if (!summary.leftOut.isEmpty())
        text << ImportText::tr("Left out, without a single number: %1.").arg(summary.leftOut.join(QStringLiteral(", ")))
             << '\n';
}

}  // namespace

QString describeImport(const ImportSummary& summary)
{
    QString result;
    QTextStream text(&result);
    for (const QString& note : summary.notes)
        text << note << '\n';
    const QString sentence = summary.createdSite ? ImportText::tr("%1 from %2 stored for %3 in %4 (new)%5.")
                                                 : ImportText::tr("%1 from %2 stored for %3 in %4%5.");
    const QString span = summary.first && summary.last
                             ? ImportText::tr(", %1 to %2").arg(moment(*summary.first), moment(*summary.last))
                             : QString();
    text << sentence.arg(records(summary.records), QFileInfo(summary.file).fileName(), summary.agent,
                         QFileInfo(summary.site).fileName(), span)
         << '\n';
    writeColumns(text, summary);
    writeCounts(text, summary);
    text.flush();
    return result;
}

}  // namespace plotix
