#include "hostapp/window/importing/ImportWords.h"

#include "hostapp/core/Localization.h"
#include "hostapp/window/importing/QualityTexts.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTextStream>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plotix {

namespace {

using What = ImportFinding::What;

/// The context of these texts' translations.
class ImportWords {
    Q_DECLARE_TR_FUNCTIONS(ImportWords)
};

QString listed(const QStringList& headers)
{
    return headers.join(QStringLiteral(", "));
}

/// The same quotation marks in every language: the text between them comes from the file.
QString quoted(const QString& text)
{
    return QStringLiteral("“%1”").arg(text);
}

/// What of the import dialog names columns.
QString fieldName(ImportOption option)
{
    switch (option) {
    case ImportOption::TimeColumn: return ImportWords::tr("Time column");
    case ImportOption::Where: return ImportWords::tr("Rows");
    case ImportOption::Quality: return ImportWords::tr("Quality");
    default: break;
    }
    return ImportWords::tr("The table of columns");
}

QString textOfUnreadableFile(const ImportFinding& finding)
{
    switch (finding.what) {
    case What::CannotBeOpened: return ImportWords::tr("cannot be read: %1").arg(finding.text);
    case What::ReadingFailed: return ImportWords::tr("reading failed: %1").arg(finding.text);
    case What::NotAFile: return ImportWords::tr("this is no file; choose one with rows of measurements");
    case What::Folder: return ImportWords::tr("this is a folder; choose a file in it");
    case What::NotATable:
        return ImportWords::tr("this is %1, no table with a row in each line; export the measurements as CSV or .xlsx")
            .arg(finding.text);
    case What::NotText:
        return ImportWords::tr("this is neither text nor a spreadsheet that can be read; export it as CSV or .xlsx");
    case What::PackedFiles: return ImportWords::tr("this is an archive of files; unpack it and import the files in it");
    case What::OldSpreadsheet:
        return ImportWords::tr("this is a spreadsheet in the old binary form; save it as .xlsx or CSV and import that");
    case What::LineTooLong:
        return ImportWords::tr("the line does not end; this is no text with a row of measurements in each line");
    case What::BrokenArchive:
        return ImportWords::tr("the file is damaged and cannot be unpacked (%1); copy or export it again")
            .arg(finding.text);
    case What::NoSuchSheet:
        return ImportWords::tr("there is no sheet “%1” with measurements (sheets: %2)")
            .arg(finding.text, listed(finding.columns));
    case What::UnclosedQuotation: return ImportWords::tr("a quotation mark opened here is never closed");
    case What::EmptyFile: return ImportWords::tr("the file is empty");
    case What::NoRowsBelowHeader: return ImportWords::tr("the file has a header and no rows");
    default: return {};
    }
}

QString textOfRowsAtOneTime(const ImportFinding& finding)
{
    const QString words = ImportWords::tr("%1 of %2 rows have the time of another row, with other values; %3")
                              .arg(QString::number(finding.expected), QString::number(finding.found));
    return words.arg(
        finding.columns.isEmpty()
            ? ImportWords::tr("name the column of the time of day too under Time column, as Date+Time, or keep "
                              "the last of them under At one time")
            : ImportWords::tr("they differ in “%1”: take those of one under Rows, as %2")
                  .arg(finding.columns.join(QStringLiteral("”, “")),
                       finding.columns.front() + QLatin1Char('=') + finding.text));
}

/// What the numbers in the time's column count.
QString textOfForm(const ImportFinding& finding)
{
    return finding.text == QLatin1String("s")        ? ImportWords::tr("seconds since 1970")
           : finding.text == QLatin1String("ms")     ? ImportWords::tr("milliseconds since 1970")
           : finding.text == QLatin1String("us")     ? ImportWords::tr("microseconds since 1970")
           : finding.text == QLatin1String("ns")     ? ImportWords::tr("nanoseconds since 1970")
           : finding.text == QLatin1String("digits") ? ImportWords::tr("dates in digits, yyyymmddhhmm")
                                                     : ImportWords::tr("days of a spreadsheet");
}

QString textOfWrongNumbers(const ImportFinding& finding)
{
    return ImportWords::tr("the numbers in “%1” are no %2: they would lie before 1990 or more than ten years ahead; if "
                           "they count from the start of a run, there is no start in the file: add a column with dates "
                           "and times, and name it under Time column")
        .arg(finding.column, textOfForm(finding));
}

QString textOfNoTable(const ImportFinding& finding)
{
    switch (finding.what) {
    case What::HeaderTooShort:
        return ImportWords::tr("the header names %1 columns and the rows have %2, and the extra column neither counts "
                               "the rows nor is empty; complete the header")
            .arg(finding.expected)
            .arg(finding.found);
    case What::HeaderDoesNotMatch:
        return ImportWords::tr("the row has %1 columns where the header names %2")
            .arg(finding.found)
            .arg(finding.expected);
    case What::NoTimeColumn:
        return ImportWords::tr("no column looks like times; name one under Time column (columns: %1)")
            .arg(listed(finding.columns));
    case What::NoTimesInColumn:
        return ImportWords::tr("column “%1” holds no times; name another under Time column (columns: %2)")
            .arg(finding.column, listed(finding.columns));
    case What::NumbersAreNoTimes: return textOfWrongNumbers(finding);
    case What::NoNumbers:
        return ImportWords::tr("no column holds numbers besides the time in “%1” (columns: %2)")
            .arg(finding.column, listed(finding.columns));
    case What::NoRowRead:
        return ImportWords::tr("no row could be read: %1")
            .arg(finding.causes.empty() ? QString() : shownText(finding.causes.front()));
    case What::NoRowWanted: return ImportWords::tr("no row has the text asked for under Rows");
    case What::DateOrderUnknown:
        return ImportWords::tr("no date in the file tells the day from the month; choose which comes first under "
                               "Dates");
    case What::DateOrderContradicts:
        return ImportWords::tr("some dates have the day first and others the month; choose which is meant under "
                               "Dates");
    case What::DecimalMarkUnknown:
        return ImportWords::tr("“%1” may have thousands or decimals, and no number in the file tells which; choose the "
                               "Decimal sign")
            .arg(finding.text);
    case What::TimesNotInZone:
        return ImportWords::tr("%1; the recorder probably keeps standard time: enter %2 under Time zone, or tick Skip "
                               "rows without a time to pass over such rows")
            .arg(finding.causes.empty() ? QString() : shownText(finding.causes.front()), finding.text);
    case What::TooManyBadRows:
        return ImportWords::tr("%1 of %2 rows cannot be read, the first: %3; tick Skip rows without a time "
                               "to import the others")
            .arg(QString::number(finding.found), QString::number(finding.expected),
                 finding.causes.empty() ? QString() : shownText(finding.causes.front()));
    case What::AnotherHeader:
        return ImportWords::tr("another table with other columns begins here; import each from a file of its own");
    case What::NoNameColumn:
        return ImportWords::tr("no column names the quantity of each row (columns: %1)").arg(listed(finding.columns));
    case What::ManyDevices:
        return ImportWords::tr("the rows of %1 devices or places, named in “%2”, alternate; take those of one under "
                               "Rows, as %3, or join all of them in one line with Keep the last row under At one time")
            .arg(QString::number(finding.found), finding.column, finding.column + QLatin1Char('=') + finding.text);
    case What::ManyRowsAtOneTime: return textOfRowsAtOneTime(finding);
    default: return {};
    }
}

QString textOfWrongOption(const ImportFinding& finding)
{
    switch (finding.what) {
    case What::UnknownColumn:
        return ImportWords::tr("%1 names the column “%2”, which is not there (columns: %3)")
            .arg(fieldName(finding.option), finding.text, listed(finding.columns));
    case What::UnknownUnit:
        return ImportWords::tr("“%1”, given for the column “%2”, is no unit that is known; write it like °C, hPa, m/s, "
                               "% or mph")
            .arg(finding.text, finding.column);
    case What::UnitsDisagree:
        return ImportWords::tr(
                   "column “%1” is in %2, but its cells are in %3; if the cells are right, choose %3 as its "
                   "unit")
            .arg(finding.column, finding.archivedUnit, finding.text);
    case What::UnknownTimeZone:
        return ImportWords::tr("“%1” is no time zone; give a name such as Europe/Berlin, or an offset such as +02:00")
            .arg(finding.text);
    case What::UnusableDelimiter: return ImportWords::tr("“%1” cannot part columns; give one sign").arg(finding.text);
    case What::UnusableTimeZone: return ImportWords::tr("the time zone “%1” cannot be used").arg(finding.text);
    case What::IncompatibleUnits:
        return ImportWords::tr("column “%1” is in %2, but the agent's property of that name is in %3; import into "
                               "another agent")
            .arg(finding.column, finding.text,
                 finding.archivedUnit.isEmpty() ? ImportWords::tr("no unit") : finding.archivedUnit);
    case What::WouldReplace:
        return ImportWords::tr("this replaces %n stored value(s)", nullptr, static_cast<int>(finding.found)) +
               ImportWords::tr(" of %n property(s)", nullptr, static_cast<int>(finding.expected));
    default: return {};
    }
}

QString textOfBadRow(const ImportFinding& finding)
{
    const auto ofLength = [&finding](const QString& wanted) {
        return ImportWords::tr("the row has %1 columns where %2: %3")
            .arg(QString::number(finding.found), wanted.arg(finding.expected), quoted(finding.text));
    };
    switch (finding.what) {
    case What::RowUnlikeHeader: return ofLength(ImportWords::tr("the header stands for %1"));
    case What::RowUnlikeOthers: return ofLength(ImportWords::tr("the rows before have %1"));
    case What::NoTime: return ImportWords::tr("%1 is no time").arg(quoted(finding.text));
    case What::NoNumber: return ImportWords::tr("%1 is no number").arg(quoted(finding.text));
    case What::NotInZone:
        return ImportWords::tr("%1 does not exist in %2, where clocks were put forward")
            .arg(quoted(finding.text), listed(finding.columns));
    default: return {};
    }
}

QString textOfNumberTimes(const ImportFinding& finding)
{
    return ImportWords::tr("The numbers in “%1” are read as %2.").arg(finding.column, textOfForm(finding));
}

/// How the time and the form of the rows were understood.
QString textOfUnderstanding(const ImportFinding& finding)
{
    switch (finding.what) {
    case What::DatesHaveDayFirst: return ImportWords::tr("Dates are read with the day first.");
    case What::DatesHaveMonthFirst: return ImportWords::tr("Dates are read with the month first.");
    case What::DatesHaveYearFirst: return ImportWords::tr("Dates are read with the year first.");
    case What::TimesAreJoined:
        return ImportWords::tr("The time is put together from the columns %1.").arg(listed(finding.columns));
    case What::ZoneFromFile:
        return ImportWords::tr("Times are read in the zone that the file names: %1.").arg(finding.text);
    case What::TimesAreNumbers: return textOfNumberTimes(finding);
    case What::RowsNameQuantities:
        return ImportWords::tr("Each row names its quantity in “%1” and has its value in “%2”: %3 in all.")
            .arg(finding.column, finding.text, QString::number(finding.found));
    case What::RowsAreDays:
        return ImportWords::tr(
                   "Each row is a day, and %1 columns are times of day, from %2 to %3: each becomes a record "
                   "of its own.")
            .arg(QString::number(finding.found), finding.text, finding.column);
    case What::SheetChosen:
        return ImportWords::tr("The sheet “%1” is read (sheets: %2).").arg(finding.text, listed(finding.columns));
    case What::StatesAreNumbers:
        return ImportWords::tr("words such as “%1” are stored as 1 (on, open, yes …) and 0").arg(finding.text);
    case What::NumbersAreGaps:
        return ImportWords::tr("In “%1” the number %2 is taken for a gap: %3 times.")
            .arg(finding.column, finding.text, QString::number(finding.found));
    case What::UnitsBelowHeader: return ImportWords::tr("units are taken from this line");
    case What::UnitsNotKnown:
        return ImportWords::tr("units that are not known stand in this line: %1; the numbers are stored without them")
            .arg(listed(finding.columns));
    default: return {};
    }
}

/// Lines that are no rows.
QString textOfLines(const ImportFinding& finding)
{
    switch (finding.what) {
    case What::LinesAboveTable: return ImportWords::tr("Lines above the header passed over: %1.").arg(finding.found);
    case What::HeadersRepeated:
        return ImportWords::tr("The header comes again further down: %1 times, passed over.").arg(finding.found);
    case What::CommentsPassedOver: return ImportWords::tr("Lines of comment passed over: %1.").arg(finding.found);
    case What::LinesBelowTable:
        return ImportWords::tr("lines below the table passed over from here: %1, beginning with “%2”")
            .arg(QString::number(finding.found), finding.text);
    case What::ShortRows:
        return ImportWords::tr("the first of %1 rows with fewer columns than the header; what they lack stays empty")
            .arg(finding.found);
    default: return {};
    }
}

QString textOfNote(const ImportFinding& finding)
{
    const auto shortHeader = [&finding] {
        return ImportWords::tr("The header names %1 columns and the rows have %2")
            .arg(finding.expected)
            .arg(finding.found);
    };
    switch (finding.what) {
    case What::ColumnsHaveNoNames:
        return ImportWords::tr("The file has no header; its columns are called Column 1 to Column %1.")
            .arg(finding.found);
    case What::RowNumbersHaveNoName:
        return ImportWords::tr("The first column has no name; it counts the rows and is left out.");
    case What::HeaderLacksRowNumbers:
        return ImportWords::tr("%1: the first column, which has no name, counts the rows and is left out; the names "
                               "(%2) belong to columns 2 to %3.")
            .arg(shortHeader(), listed(finding.columns), QString::number(finding.found));
    case What::HeaderLacksEmptyLast:
        return ImportWords::tr("%1: the last column is always empty and is left out.").arg(shortHeader());
    default: return {};
    }
}

/// Inserts the count, in the language's digits, into `words`, which have the right plural form already.
QString counted(std::size_t count, const QString& words)
{
    return words.arg(QLocale(installedLanguage()).toString(static_cast<qulonglong>(count)));
}

/// The number that chooses the plural form; forms differ only for small numbers.
int chooser(std::size_t count)
{
    return static_cast<int>(std::min<std::size_t>(count, std::numeric_limits<int>::max()));
}

QString rows(std::size_t count)
{
    return counted(count, ImportWords::tr("%1 row(s)", nullptr, chooser(count)));
}

QString values(std::size_t count)
{
    return counted(count, ImportWords::tr("%1 value(s)", nullptr, chooser(count)));
}

QString records(std::size_t count)
{
    return counted(count, ImportWords::tr("%1 record(s)", nullptr, chooser(count)));
}

void writeColumns(QTextStream& text, const ImportSummary& summary)
{
    for (const ImportSummary::Column& column : summary.columns) {
        text << "  " << column.propertyName << ": " << column.name;
        if (!column.unit.isEmpty())
            text << " (" << column.unit << ')';
        text << ", " << values(column.valid);
        if (column.marked > 0)
            text << ", " << textOfMarked(column.marked, column.quality);
        if (column.bad > 0 && column.firstBad)
            text << ", "
                 << counted(column.bad,
                            ImportWords::tr("%1 cell(s) left empty, being no number", nullptr, chooser(column.bad)))
                 << " (" << shownText(*column.firstBad) << ')';
        text << '\n';
    }
}

void writeCounts(QTextStream& text, const ImportSummary& summary)
{
    if (summary.otherRows > 0)
        text << ImportWords::tr("%1 with another text in the column passed over.").arg(rows(summary.otherRows)) << '\n';
    if (summary.unorderedTimes > 0)
        text << ImportWords::tr("%1 earlier than the row before; sorted by time.").arg(rows(summary.unorderedTimes))
             << '\n';
    if (summary.repeatedTimes > 0)
        text << ImportWords::tr("%1 at a time that comes again later; of each column the last number was kept.")
                    .arg(rows(summary.repeatedTimes))
             << '\n';
    if (summary.badRows > 0)
        text << ImportWords::tr("%1 that cannot be read passed over, the first: %2.")
                    .arg(rows(summary.badRows), summary.firstBadRow ? shownText(*summary.firstBadRow) : QString())
             << '\n';
    if (!summary.leftOut.isEmpty())
        text << ImportWords::tr("Left out, without a number or with hardly one: %1.").arg(listed(summary.leftOut))
             << '\n';
}

}  // namespace

QString shownText(const ImportFinding& finding)
{
    QString words;
    for (const auto textOf : {textOfUnreadableFile, textOfNoTable, textOfWrongOption, textOfBadRow, textOfNote,
                              textOfUnderstanding, textOfLines, textOfQuality})
        if (words.isEmpty())
            words = textOf(finding);
    if (finding.line == 0)
        return words;
    return finding.column.isEmpty()
               ? ImportWords::tr("line %1: %2").arg(QString::number(finding.line), words)
               : ImportWords::tr("line %1, column “%2”: %3").arg(QString::number(finding.line), finding.column, words);
}

QString shownTime(double seconds, bool withFraction)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000));
    const QLocale locale;
    const QString clock = withFraction ? QStringLiteral("HH:mm:ss.zzz") : QStringLiteral("HH:mm:ss");
    return QStringLiteral("%1 %2 %3")
        .arg(locale.toString(time.date(), QLocale::ShortFormat), locale.toString(time.time(), clock),
             time.timeZoneAbbreviation());
}

QString shownText(const ImportSummary& summary)
{
    QString result;
    QTextStream text(&result);
    const QString sentence = summary.createdSite ? ImportWords::tr("%1 from %2 stored for %3 in %4 (new)%5.")
                                                 : ImportWords::tr("%1 from %2 stored for %3 in %4%5.");
    const QString span = summary.first && summary.last
                             ? ImportWords::tr(", %1 to %2").arg(shownTime(*summary.first), shownTime(*summary.last))
                             : QString();
    text << sentence.arg(records(summary.records), QFileInfo(summary.file).fileName(), summary.agent,
                         QFileInfo(summary.site).fileName(), span)
         << '\n';
    writeColumns(text, summary);
    writeCounts(text, summary);
    for (const ImportFinding& note : summary.notes)
        text << shownText(note) << '\n';
    text.flush();
    return result;
}

}  // namespace plotix
