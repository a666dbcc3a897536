#include "hostapp/cli/ImportWords.h"

#include "hostapp/exchange/ExactText.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTextStream>

namespace plotix {

namespace {

using What = ImportFinding::What;

QString optionName(ImportOption option)
{
    switch (option) {
    case ImportOption::TimeColumn: return QStringLiteral("--time");
    case ImportOption::Where: return QStringLiteral("--where");
    case ImportOption::Only: return QStringLiteral("--only");
    case ImportOption::Unit: return QStringLiteral("--unit");
    case ImportOption::Name: return QStringLiteral("--name");
    case ImportOption::TimeZone: return QStringLiteral("--time-zone");
    case ImportOption::DateOrder: return QStringLiteral("--date-order");
    case ImportOption::Decimal: return QStringLiteral("--decimal");
    case ImportOption::Delimiter: return QStringLiteral("--delimiter");
    case ImportOption::Sheet: return QStringLiteral("--sheet");
    case ImportOption::Arrangement: return QStringLiteral("--arrangement");
    case ImportOption::RowsAtOneTime: return QStringLiteral("--keep-last");
    case ImportOption::BadRows: return QStringLiteral("--skip-bad-rows");
    case ImportOption::Quality: return QStringLiteral("--quality");
    case ImportOption::BadWords: return QStringLiteral("--bad");
    case ImportOption::None: break;
    }
    return {};
}

/// %1 the finding's text, %2 its column, %3 the columns there are, %4 how many were found, %5 how many expected, %6 the
/// archived unit, %7 the option, %8 the cause.
const char* sentence(What what)
{
    switch (what) {
    case What::CannotBeOpened: return "cannot be read: %1";
    case What::ReadingFailed: return "reading failed: %1";
    case What::NotAFile: return "this is no file; give one with rows of measurements";
    case What::Folder: return "this is a folder; give a file in it";
    case What::NotATable:
        return "this is %1, no table with a row in each line; export the measurements as CSV or .xlsx";
    case What::NotText: return "this is neither text nor a spreadsheet that can be read; export it as CSV or .xlsx";
    case What::PackedFiles: return "this is an archive of files; unpack it and import the files in it";
    case What::OldSpreadsheet:
        return "this is a spreadsheet in the old binary form; save it as .xlsx or CSV and import that";
    case What::LineTooLong: return "the line does not end; this is no text with a row of measurements in each line";
    case What::BrokenArchive: return "the file is damaged and cannot be unpacked (%1); copy or export it again";
    case What::NoSuchSheet: return "there is no sheet “%1” with measurements; give one with --sheet (sheets: %3)";
    case What::UnclosedQuotation: return "a quotation mark opened here is never closed";
    case What::EmptyFile: return "the file is empty";
    case What::NoRowsBelowHeader: return "the file has a header and no rows";
    case What::HeaderTooShort:
        return "the header names %5 columns and the rows have %4, and the extra column neither counts the rows nor is "
               "empty; complete the header";
    case What::HeaderDoesNotMatch: return "the row has %4 columns where the header names %5";
    case What::NoTimeColumn: return "no column looks like times; name one with --time (columns: %3)";
    case What::NoTimesInColumn: return "column “%2” holds no times; name another with --time (columns: %3)";
    case What::NumbersAreNoTimes: return "";  // see textOfWrongNumbers
    case What::NoNumbers: return "no column holds numbers besides the time in “%2” (columns: %3)";
    case What::NoRowRead: return "no row could be read: %8";
    case What::NoRowWanted: return "no row has the texts asked for with --where";
    case What::DateOrderUnknown:
        return "no date in the file tells the day from the month; say which comes first with --date-order dmy or "
               "--date-order mdy";
    case What::DateOrderContradicts:
        return "some dates have the day first and others the month; say which is meant with --date-order dmy or "
               "--date-order mdy";
    case What::DecimalMarkUnknown:
        return "“%1” may have thousands or decimals, and no number in the file tells which; say which sign stands "
               "before "
               "the decimals with --decimal comma or --decimal point";
    case What::ManyDevices:
        return "the rows of %4 devices or places, named in “%2”, alternate; take those of one with --where \"%2=%1\", "
               "or join all of them in one line with --keep-last";
    case What::ManyRowsAtOneTime: return "";  // see textOfRowsAtOneTime
    case What::TimesNotInZone:
        return "%8; the recorder probably keeps standard time: say --time-zone %1, or pass over such rows with "
               "--skip-bad-rows";
    case What::TooManyBadRows:
        return "%4 of %5 rows cannot be read, the first: %8; if that is how it is, pass over them with --skip-bad-rows";
    case What::AnotherHeader: return "another table with other columns begins here; import each from a file of its own";
    case What::NoNameColumn: return "no column names the quantity of each row (columns: %3)";
    case What::UnknownColumn: return "%7 names the column “%1”, which is not there (columns: %3)";
    case What::UnknownUnit:
        return "“%1”, given with --unit for the column “%2”, is no unit that is known; write it like °C, hPa, m/s, % "
               "or mph";
    case What::UnitsDisagree:
        return "column “%2” is in %6, but its cells are in %1; if the cells are right, say --unit \"%2=%1\"";
    case What::UnknownTimeZone:
        return "“%1” is no time zone; give a name such as Europe/Berlin, or an offset such as +02:00";
    case What::UnusableTimeZone: return "the time zone “%1” cannot be used";
    case What::UnusableDelimiter:
        return "“%1” cannot part columns; give one sign, such as --delimiter ';', tab or blank";
    case What::IncompatibleUnits:
        return "column “%2” is in %1, but the agent's property of that name is in %6; give it another name with --name";
    case What::QualityHasNoWords:
        return "column “%2” does not say which values are bad in words or numbers that are known, but such as “%1”; "
               "say "
               "which of them do with --bad WORD,…";
    case What::WouldReplace:
        return "this replaces %1; nothing was changed; import it with --replace if that "
               "is meant, or into an agent of its own with --agent";
    case What::RowUnlikeHeader: return "the row has %4 columns where the header stands for %5: “%1”";
    case What::RowUnlikeOthers: return "the row has %4 columns where the rows before have %5: “%1”";
    case What::NoTime: return "“%1” is no time";
    case What::NoNumber: return "“%1” is no number";
    case What::NotInZone: return "“%1” does not exist in %3, where clocks were put forward";
    case What::ColumnsHaveNoNames: return "The file has no header; its columns are called Column 1 to Column %4.";
    case What::RowNumbersHaveNoName: return "The first column has no name; it counts the rows and is left out.";
    case What::HeaderLacksRowNumbers:
        return "The header names %5 columns and the rows have %4: the first column, which has no name, counts the rows "
               "and is left out; the names (%3) belong to columns 2 to %4.";
    case What::HeaderLacksEmptyLast:
        return "The header names %5 columns and the rows have %4: the last column is always empty and is left out.";
    case What::DatesHaveDayFirst: return "Dates are read with the day first.";
    case What::DatesHaveMonthFirst: return "Dates are read with the month first.";
    case What::DatesHaveYearFirst: return "Dates are read with the year first.";
    case What::TimesAreJoined: return "The time is put together from the columns %3.";
    case What::ZoneFromFile: return "Times are read in the zone that the file names: %1.";
    case What::TimesAreNumbers: return "";  // see textOfNumberTimes
    case What::LinesAboveTable: return "Lines above the rows passed over: %4.";
    case What::UnitsBelowHeader: return "units are taken from this line";
    case What::UnitsNotKnown:
        return "units that are not known stand in this line: %3; the numbers are stored without them";
    case What::RowsNameQuantities: return "Each row names its quantity in “%2” and has its value in “%1”: %4 in all.";
    case What::RowsAreDays:
        return "Each row is a day, and %4 columns are times of day, from %1 to %2: each becomes a record of its own; "
               "if "
               "they are quantities, say --arrangement columns.";
    case What::SheetChosen: return "The sheet “%1” is read (sheets: %3).";
    case What::StatesAreNumbers: return "words such as “%1” are stored as 1 (on, open, yes …) and 0";
    case What::NumbersAreGaps:
        return "In “%2” the number %1 is taken for a gap (%4 times); if it is a value, say --keep-all-numbers.";
    case What::HeadersRepeated: return "The header comes again further down: %4 times, passed over.";
    case What::CommentsPassedOver: return "Lines of comment passed over: %4.";
    case What::LinesBelowTable: return "lines below the table passed over from here: %4, beginning with “%1”";
    case What::QualityRecognised: return "";  // see textOfQuality
    case What::QualityNotSure:
        return "“%2” seems to say which values are bad, but not what “%1” means; its values are taken as good. If it "
               "does, say --quality \"%2=COLUMN\", with --bad WORD,… for the words that do.";
    case What::QualityNotAssigned:
        return "“%2” seems to say which values are bad, but not of which column; they are taken as good. If it does, "
               "say --quality \"%2=COLUMN\".";
    case What::QualityWordsUnknown:
        return "“%1” says neither good nor bad (%4 times); such values are taken as good. If it means bad, say all "
               "such "
               "words with --bad WORD,…";
    case What::ShortRows: return "the first of %4 rows with fewer columns than the header; what they lack stays empty";
    }
    return "";
}

/// Rows at one time: what they cost, and what settles it.
QString textOfRowsAtOneTime(const ImportFinding& finding)
{
    const QString remedy =
        finding.columns.isEmpty()
            ? QStringLiteral("name the column of the time of day too, as --time Date+Time, or keep the last row of "
                             "each time with --keep-last")
            : QStringLiteral("they differ in “%1”: take those of one with --where \"%2=%3\"")
                  .arg(finding.columns.join(QStringLiteral("”, “")), finding.columns.front(), finding.text);
    return QStringLiteral("%1 of %2 rows have the time of another row, with other values; %3")
        .arg(QString::number(finding.expected), QString::number(finding.found), remedy);
}

/// What the numbers in the time's column count.
QString textOfForm(const ImportFinding& finding)
{
    return finding.text == QLatin1String("s")        ? QStringLiteral("seconds since 1970")
           : finding.text == QLatin1String("ms")     ? QStringLiteral("milliseconds since 1970")
           : finding.text == QLatin1String("us")     ? QStringLiteral("microseconds since 1970")
           : finding.text == QLatin1String("ns")     ? QStringLiteral("nanoseconds since 1970")
           : finding.text == QLatin1String("digits") ? QStringLiteral("dates in digits, yyyymmddhhmm")
                                                     : QStringLiteral("days of a spreadsheet");
}

QString textOfNumberTimes(const ImportFinding& finding)
{
    return QStringLiteral("The numbers in “%1” are read as %2.").arg(finding.column, textOfForm(finding));
}

QString textOfQuality(const ImportFinding& finding)
{
    const QString columns = QStringLiteral("“%1”").arg(finding.columns.join(QStringLiteral("”, “")));
    const QString judged = finding.text.isEmpty() ? QStringLiteral("%1 columns").arg(finding.found)
                                                  : QStringLiteral("“%1”").arg(finding.text);
    return QStringLiteral("%1 %2 which values of %3 are bad; they are kept and marked as invalid. If that is not "
                          "meant, say --ignore-quality.")
        .arg(columns, finding.columns.size() == 1 ? QStringLiteral("says") : QStringLiteral("say"), judged);
}

QString textOfWrongNumbers(const ImportFinding& finding)
{
    return QStringLiteral("the numbers in “%1” are no %2: they would lie before 1990 or more than ten years ahead; if "
                          "they count from the start of a run, there is no start in the file: add a column with dates "
                          "and times, and name it with --time")
        .arg(finding.column, textOfForm(finding));
}

/// The sentence with `arguments` at %1 … %9, whichever of them it has.
QString filled(const QString& sentence, const QStringList& arguments)
{
    QString text;
    for (qsizetype index = 0; index < sentence.size(); ++index) {
        const bool isPlace =
            sentence[index] == QLatin1Char('%') && index + 1 < sentence.size() && sentence[index + 1].isDigit();
        text += isPlace ? arguments.value(sentence[++index].digitValue() - 1) : QString(sentence[index]);
    }
    return text;
}

/// "1 row", "1,200 rows".
QString counted(std::size_t count, const char* noun)
{
    const QString number = QLocale(QLocale::English).toString(static_cast<qulonglong>(count));
    return number + QLatin1Char(' ') + QLatin1String(noun) + (count == 1 ? QString() : QStringLiteral("s"));
}

QString replacedText(const ImportFinding& finding)
{
    return counted(finding.found, "stored value") + (finding.expected == 1
                                                         ? QStringLiteral(" of 1 property")
                                                         : QStringLiteral(" of %1 properties").arg(finding.expected));
}

void writeColumns(QTextStream& text, const ImportSummary& summary)
{
    for (const ImportSummary::Column& column : summary.columns) {
        text << "  " << column.propertyName << ": " << column.name;
        if (!column.unit.isEmpty())
            text << " (" << column.unit << ')';
        text << ", " << counted(column.valid, "value");
        if (column.marked > 0)
            text << ", " << counted(column.marked, "value") << (column.marked == 1 ? " is" : " are")
                 << " marked as bad by “" << column.quality << "”";
        if (column.bad > 0 && column.firstBad)
            text << ", " << counted(column.bad, "cell")
                 << (column.bad == 1 ? " that is no number" : " that are no numbers") << " left empty (line "
                 << column.firstBad->line << ": “" << column.firstBad->text << "”)";
        text << '\n';
    }
}

void writeCounts(QTextStream& text, const ImportSummary& summary)
{
    if (summary.replaced > 0)
        text << counted(summary.replaced, "stored value")
             << " replaced; plotix edit SITE --undo-import takes it back.\n";
    if (summary.otherRows > 0)
        text << counted(summary.otherRows, "row") << " with another text in the --where column passed over.\n";
    if (summary.unorderedTimes > 0)
        text << counted(summary.unorderedTimes, "row") << " earlier than the row before; sorted by time.\n";
    if (summary.repeatedTimes > 0)
        text << counted(summary.repeatedTimes, "row")
             << " at a time that comes again later; of each column the last number was kept.\n";
    if (summary.badRows > 0)
        text << counted(summary.badRows, "row") << " that cannot be read passed over, the first: "
             << (summary.firstBadRow ? printedText(*summary.firstBadRow) : QString()) << ".\n";
    if (!summary.leftOut.isEmpty())
        text << "Left out, without a number or with hardly one: " << summary.leftOut.join(QStringLiteral(", "))
             << ".\n";
}

}  // namespace

QString printedText(const ImportFinding& finding)
{
    if (finding.what == What::ManyRowsAtOneTime)
        return textOfRowsAtOneTime(finding);
    if (finding.what == What::QualityRecognised)
        return textOfQuality(finding);
    if (finding.what == What::TimesAreNumbers)
        return textOfNumberTimes(finding);
    if (finding.what == What::NumbersAreNoTimes)
        return textOfWrongNumbers(finding);
    const QString unit = finding.archivedUnit.isEmpty() ? QStringLiteral("no unit") : finding.archivedUnit;
    const QString cause = finding.causes.empty() ? QString() : printedText(finding.causes.front());
    const QString text = finding.what == What::WouldReplace ? replacedText(finding) : finding.text;
    const QString words =
        filled(QString::fromUtf8(sentence(finding.what)),
               {text, finding.column, finding.columns.join(QStringLiteral(", ")), QString::number(finding.found),
                QString::number(finding.expected), unit, optionName(finding.option), cause});
    const bool isFieldOfRow = finding.line > 0 && !finding.column.isEmpty();
    if (isFieldOfRow)
        return QStringLiteral("line %1, column “%2”: %3").arg(QString::number(finding.line), finding.column, words);
    return finding.line > 0 ? QStringLiteral("line %1: %2").arg(QString::number(finding.line), words) : words;
}

QString printedText(const ImportSummary& summary)
{
    QString result;
    QTextStream text(&result);
    for (const ImportFinding& note : summary.notes)
        text << printedText(note) << '\n';
    text << counted(summary.records, "record") << " from " << QFileInfo(summary.file).fileName() << " stored for "
         << summary.agent << " in " << QFileInfo(summary.site).fileName() << (summary.createdSite ? " (new)" : "");
    if (summary.first && summary.last)
        text << ", " << readableTime(*summary.first) << " to " << readableTime(*summary.last);
    text << ".\n";
    writeColumns(text, summary);
    writeCounts(text, summary);
    text.flush();
    return result;
}

}  // namespace plotix
