#include "hostapp/exchange/tables/TableReader.h"

#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/tables/NumberTimes.h"

#include <algorithm>

namespace plotix {

namespace {

using What = ImportFinding::What;

bool hasDottedDates(const TableSample& sample, const TableShape& shape, std::size_t field)
{
    for (const TableSample::Row& row : dataRows(sample, shape))
        if (const auto date = field < row.fields.size() ? splitDateAndTime(row.fields[field]) : std::nullopt)
            return date->separator == '.' && !date->yearFirst;
    return false;
}

}  // namespace

void TableReader::understand(TableSample sample)
{
    m_sample = std::move(sample);
    if (m_options.arrangement != Arrangement::Columns)
        m_days = DayRows::in(m_sample);
    if (m_days) {
        m_sample = m_days->takenApart(m_sample);
        const QStringList clocks = m_days->clocks();
        m_notes.push_back({.what = What::RowsAreDays,
                           .column = clocks.back(),
                           .text = clocks.front(),
                           .found = static_cast<std::size_t>(clocks.size())});
    }
    m_shape = shapeOf(m_sample);
    m_columns = columnsOf(m_shape);
    m_notes.insert(m_notes.end(), m_shape.notes.begin(), m_shape.notes.end());
}

std::size_t TableReader::chooseTimeColumn(const std::vector<std::size_t>& named)
{
    m_time = timeColumnsOf(m_sample, m_shape, named);
    for (const std::size_t field : m_time.fields)
        m_columns[field].isTime = true;
    for (const std::size_t field : m_time.others)
        m_columns[field].isMeasurement = false;
    noteTimes();
    if (!m_options.ignoreQuality)
        lookForQualitiesBelow();
    m_named = namedRowsOf(m_sample, m_shape, m_time, m_options.arrangement);
    if (!m_options.ignoreQuality)
        recogniseQualities();
    if (m_named)
        addNamedColumns();
    return m_time.fields.front();
}

void TableReader::noteTimes()
{
    QStringList headers;
    for (const std::size_t field : m_time.fields)
        headers << m_columns[field].header;
    if (headers.size() > 1)
        m_notes.push_back({.what = What::TimesAreJoined, .columns = headers});
    if (const char* const form = numberForm(m_time.layout))
        m_notes.push_back(
            {.what = What::TimesAreNumbers, .column = headers.front(), .text = QString::fromLatin1(form)});
    if (!m_time.statedZone.isEmpty() && m_options.timeZone.trimmed().isEmpty() && !isEpoch(m_time.layout))
        m_notes.push_back({.what = What::ZoneFromFile, .text = m_time.statedZone});
}

void TableReader::begin(const ImportPlan& plan)
{
    m_plan = &plan;
    if (m_time.needsDateOrder && plan.dateOrder != DateOrder::Detect) {
        m_time.needsDateOrder = false;
        m_time.layout = plan.dateOrder == DateOrder::DayFirst     ? TimeLayout::DayFirst
                        : plan.dateOrder == DateOrder::MonthFirst ? TimeLayout::MonthFirst
                                                                  : TimeLayout::ShortYearFirst;
    }
    prepareUnits();
    prepareQualities();
    decideMarks();
    m_stage = m_time.needsDateOrder || m_marksAreOpen ? Stage::Scan : Stage::Rows;
    if (m_stage == Stage::Scan)
        rewindRows();
    else
        startRows();
}

/// What the user, the header and the cells say about units must go together.
void TableReader::prepareUnits()
{
    m_cellUnits.clear();
    for (const ImportPlan::Column& column : m_plan->columns) {
        const bool isNamed = column.field >= m_shape.fields();
        const std::string usual = isNamed ? std::string() : m_shape.units[column.field];
        const bool agree = isNamed ? m_kinds.setUnit(column.field - m_shape.fields(), column.unit)
                                   : m_cellUnits.emplace_back(column.unit, usual).agree();
        if (!agree)
            throw ImportFailure(
                {.what = What::UnitsDisagree,
                 .column = column.header,
                 .text = isNamed ? m_kinds.quantities()[column.field - m_shape.fields()].unit : textForFinding(usual),
                 .archivedUnit = column.unit});
    }
}

/// The number in a cell that may have a unit behind it.
NumberWithUnit TableReader::numberIn(std::string_view field, std::size_t index)
{
    if (!m_named)
        return m_cellUnits[index].split(field);
    if (m_shape.units[m_named->value].empty())
        return {field, {}};
    const NumberWithUnit split = splitUnitOff(field);
    const bool isUsual = split.unit == m_shape.units[m_named->value];
    return isUsual || isUnitOfCell(split.unit) ? split : NumberWithUnit{field, {}};
}

/// The decimal mark of each column: the one said, the one its own numbers prove in the sample, or all numbers there.
void TableReader::decideMarks()
{
    const std::size_t count = m_named ? 1 : m_plan->columns.size();
    m_evidence.assign(count, {});
    for (const TableSample::Row& row : dataRows(m_sample, m_shape))
        for (std::size_t index = 0; index < count; ++index) {
            const std::size_t field = m_named ? m_named->value : m_plan->columns[index].field;
            if (field < row.fields.size())
                m_evidence[index].add(numberIn(row.fields[field], index).number);
        }
    endScan();
}

/// What the form of the file tells about numbers such as 1.234: a comma between fields is no decimal mark, a semicolon
/// is mostly there because the comma is one, and where dates have dots numbers have commas. A point in a file of the
/// latter two kinds is not settled by it: it may part thousands.
bool TableReader::isSettledByForm(const DecimalEvidence& evidence, DecimalMark& mark) const
{
    const bool hasDots = hasDottedDates(m_sample, m_shape, m_time.fields.front());
    const char delimiter = m_sample.delimiter;
    if (delimiter == '\0')
        return false;  // numbers of a spreadsheet say it themselves; texts leave it open
    const bool isContinental = delimiter == ';' || hasDots;
    if (evidence.eitherCommas == 0 && (!isContinental || delimiter == ',')) {
        mark = DecimalMark::Point;
        return true;
    }
    if (evidence.eitherPoints == 0 && isContinental) {
        mark = DecimalMark::Comma;
        return true;
    }
    return false;
}

/// Reads the rows once for what only all of them tell.
bool TableReader::scan()
{
    for (std::size_t count = 0; count < kRowsInBatch; ++count) {
        if (!nextRow(m_record)) {
            decideDateOrder();
            endScan();
            if (m_marksAreOpen)
                throw ImportFailure(*m_openNumber);
            startRows();
            break;
        }
        scanRow(m_record);
    }
    return true;
}

void TableReader::scanRow(const TextRecord& record)
{
    const std::string_view time = fieldAt(record, m_time.fields.front());
    const std::optional<DateAndTime> date = m_time.needsDateOrder ? joinedTimeOf(record) : std::nullopt;
    if (date)
        m_dates.add(*date);
    if (!m_marksAreOpen || (m_time.needsDateOrder ? !date : time.empty()))
        return;
    for (std::size_t index = 0; index < m_evidence.size(); ++index) {
        const std::size_t field = m_named ? m_named->value : m_plan->columns[index].field;
        const std::string_view text = numberIn(fieldAt(record, field), index).number;
        const MarkIn mark = markIn(text);
        m_evidence[index].add(text);
        const bool isEither = mark == MarkIn::EitherPoint || mark == MarkIn::EitherComma;
        if (isEither && !m_openNumber)
            m_openNumber = ImportFinding{.what = What::DecimalMarkUnknown,
                                         .line = record.line,
                                         .column = m_columns[field].header,
                                         .text = textForFinding(text)};
    }
}

/// Settles the decimal marks as far as the evidence goes.
void TableReader::endScan()
{
    DecimalEvidence all;
    for (const DecimalEvidence& evidence : m_evidence)
        all.add(evidence);
    m_marks.assign(m_evidence.size(), DecimalMark::Unknown);
    m_marksAreOpen = false;
    for (std::size_t index = 0; index < m_marks.size(); ++index) {
        DecimalMark& mark = m_marks[index];
        if (m_plan->decimal != DecimalSign::Detect)
            mark = m_plan->decimal == DecimalSign::Point ? DecimalMark::Point : DecimalMark::Comma;
        else if (const DecimalMark own = m_evidence[index].proven(); own != DecimalMark::Unknown)
            mark = own;
        else if (all.proven() != DecimalMark::Unknown)
            mark = all.proven();
        else if (all.isOpen() && !isSettledByForm(all, mark))
            m_marksAreOpen = true;
    }
    setCommonMark();
}

void TableReader::setCommonMark()
{
    const bool isCommon = !m_marks.empty() && std::all_of(m_marks.begin(), m_marks.end(),
                                                          [this](DecimalMark mark) { return mark == m_marks.front(); });
    m_commonMark = isCommon ? m_marks.front() : DecimalMark::Unknown;
}

void TableReader::decideDateOrder()
{
    if (!m_time.needsDateOrder)
        return;
    m_time.layout = decidedLayout(m_dates);
    m_time.needsDateOrder = false;
    m_notes.push_back({.what = m_time.layout == TimeLayout::DayFirst     ? What::DatesHaveDayFirst
                               : m_time.layout == TimeLayout::MonthFirst ? What::DatesHaveMonthFirst
                                                                         : What::DatesHaveYearFirst});
}

void TableReader::startRows()
{
    m_stage = Stage::Rows;
    m_date.clear();
    m_shortRows = {.what = What::ShortRows};
    m_comments = m_headersAgain = 0;
    m_qualities.clear();
    for (const QualityCode code : m_qualityCodes)
        m_qualities.emplace_back(code, m_plan->badWords);
    m_quantities = m_named ? std::make_unique<QuantityTable>() : nullptr;
    if (m_named)
        for (const QuantityKinds::Quantity& quantity : m_kinds.quantities())
            m_quantities->columnOf(quantity.key());
    m_times = std::make_unique<TimeColumnReader>(m_time.layout, LocalTime(m_plan->timeZone));
    if (m_time.areBounded)
        m_times->limitNumbers(kEarliestNumber, latestNumber());
    rewindRows();
    for (std::size_t row = 0; row < m_shape.firstRow; ++row)
        nextRow(m_record);
    prepareRows();
}

bool TableReader::read(ImportTable& table)
{
    if (m_stage == Stage::Scan)
        return scan();
    const bool more = readRows(table);
    if (m_mustRestart) {
        m_mustRestart = false;
        table.restart();
        m_stage = Stage::Scan;
        rewindRows();
        return true;
    }
    m_isCutShort = more && hasEnoughCells();
    if (!more || m_isCutShort)
        endRows(table);
    return more && !m_isCutShort;
}

SourceForm TableReader::form() const
{
    SourceForm form;
    if (m_sample.delimiter != '\0')
        form.delimiter = QString(QLatin1Char(m_sample.delimiter));
    if (m_commonMark != DecimalMark::Unknown)
        form.decimal = m_commonMark == DecimalMark::Point ? DecimalSign::Point : DecimalSign::Comma;
    if (m_plan != nullptr && !m_time.needsDateOrder)
        form.dateOrder = m_time.layout == TimeLayout::DayFirst         ? DateOrder::DayFirst
                         : m_time.layout == TimeLayout::MonthFirst     ? DateOrder::MonthFirst
                         : m_time.layout == TimeLayout::ShortYearFirst ? DateOrder::YearFirst
                                                                       : DateOrder::Detect;
    form.arrangement = m_named ? Arrangement::Names : m_days ? Arrangement::Detect : Arrangement::Columns;
    return form;
}

}  // namespace plotix
