#pragma once

#include "hostapp/exchange/ImportPlan.h"
#include "hostapp/exchange/ImportTable.h"
#include "hostapp/exchange/NumberText.h"
#include "hostapp/exchange/QualityReader.h"
#include "hostapp/exchange/RowSource.h"
#include "hostapp/exchange/TimeColumnReader.h"
#include "hostapp/exchange/tables/CellUnits.h"
#include "hostapp/exchange/tables/DayRows.h"
#include "hostapp/exchange/tables/NamedRows.h"
#include "hostapp/exchange/tables/QuantityKinds.h"
#include "hostapp/exchange/tables/QuantityTable.h"

#include <memory>

namespace plotix {

/// A table of texts as a source of rows, whatever format the texts come from: finds out from the first rows what the
/// columns are, then reads cell by cell. What only the whole file tells (the order of day and month, the decimal mark,
/// the names of quantities that rows name) is found by reading it once before the rows.
///
/// A format derives from it and gives the rows. *Owned* by the importer; one thread.
class TableReader : public RowSource {
public:
    const std::vector<SourceColumn>& columns() const override { return m_columns; }
    std::size_t chooseTimeColumn(const std::vector<std::size_t>& named) override;
    QString statedTimeZone() const override { return m_time.statedZone; }
    void begin(const ImportPlan& plan) override;
    bool read(ImportTable& table) override;
    bool isCutShort() const override { return m_isCutShort; }
    SourceForm form() const override;
    std::vector<std::pair<QString, QString>> categories() override;
    std::optional<ImportFinding> mixture() override;
    const std::vector<ImportFinding>& notes() const override { return m_notes; }

protected:
    /// Call `understand` before anything else.
    explicit TableReader(const ImportOptions& options) : m_options(options) {}
    /// Throws ImportFailure for a sample that is not the beginning of a table.
    void understand(TableSample sample);
    void addNote(const ImportFinding& note) { m_notes.push_back(note); }

    /// The next row of the file; false at its end. `rewind` goes back to the first one.
    virtual bool next(TextRecord& record) = 0;
    virtual void rewind() = 0;

    /// Before the first row of measurements, and when the decimal mark is learnt: for formats with a way of their own
    /// to read rows.
    virtual void prepareRows() {}
    /// Adds some thousands of rows; false after the last one.
    virtual bool readRows(ImportTable& table);

    /// What such a way needs. The common mark is Unknown while columns differ or know none.
    const TableShape& shape() const { return m_shape; }
    const ImportPlan& plan() const { return *m_plan; }
    TimeColumnReader& times() { return *m_times; }
    bool hasSingleTime() const { return m_time.form == TimeColumns::Form::Single; }
    /// Whether a number without a unit counts in every column.
    bool takesBareNumbers() const;
    bool rowsNameQuantities() const { return m_named.has_value(); }
    std::vector<QualityReader>& qualities() { return m_qualities; }  ///< by the plan's
    DecimalMark commonMark() const { return m_commonMark; }
    void addRow(const TextRecord& record, ImportTable& table);

    static constexpr std::size_t kRowsInBatch = 4096;

private:
    enum class Stage { Scan, Rows };

    // Before the rows
    void noteTimes();
    void recogniseQualities();
    void lookForQualitiesBelow();
    void noteUnknownQualities();
    void prepareQualities();
    void addNamedColumns();
    SourceColumn columnOf(const QuantityKinds::Quantity& quantity) const;
    void prepareUnits();
    void decideMarks();
    std::vector<std::size_t> deviceFields() const;
    bool isSettledByForm(const DecimalEvidence& evidence, DecimalMark& mark) const;
    bool scan();
    void scanRow(const TextRecord& record);
    void endScan();
    void decideDateOrder();
    void startRows();

    // Rows
    bool nextRow(TextRecord& record);  ///< of the table as it is understood; so are the rows counted
    void rewindRows();
    std::string_view fieldAt(const TextRecord& record, std::size_t field) const;
    std::optional<DateAndTime> joinedTimeOf(const TextRecord& record);
    std::optional<double> timeOf(const TextRecord& record);
    bool allHold(const std::vector<ImportPlan::Condition>& conditions, const TextRecord& record) const;
    bool conditionsHold(const TextRecord& record) const { return allHold(m_plan->conditions, record); }
    void passOverLine(const TextRecord& record, ImportTable& table);
    void passOverSkippedTime(const TextRecord& record, ImportTable& table);
    bool isTooLong(const TextRecord& record) const;
    void judge(const TextRecord& record);
    ImportTable::Mark markOfQuantity(const TextRecord& record, std::size_t quantity);
    ImportTable::Mark markOf(const ImportPlan::Column& column) const;
    void addCells(const TextRecord& record, ImportTable& table, double time);
    void addNamedCell(const TextRecord& record, double time);
    bool hasEnoughCells() const;
    void moveQuantities(ImportTable& table);
    std::string nameIn(const TextRecord& record) const;
    std::string_view unitIn(const TextRecord& record);
    NumberWithUnit numberIn(std::string_view field, std::size_t index);
    FieldKind readCell(std::string_view field, std::size_t mark, double& value);
    void learnMark(std::string_view field, std::size_t mark);
    void setCommonMark();
    void endRows(ImportTable& table);

    ImportOptions m_options;
    TableSample m_sample;
    TableShape m_shape;
    std::vector<SourceColumn> m_columns;
    TimeColumns m_time;
    std::optional<DayRows> m_days;  // rows of days, taken apart
    std::optional<NamedRows> m_named;
    QuantityKinds m_kinds;  // of the columns behind the file's own, in their order
    std::vector<ImportFinding> m_notes;

    // From `begin` on:
    const ImportPlan* m_plan = nullptr;  // borrowed
    Stage m_stage = Stage::Rows;
    TextRecord m_record;
    DateOrderEvidence m_dates;
    std::string m_date;   // of the row before: some exports write it once a day
    std::string m_clock;  // of this row, with its half of the day
    std::unique_ptr<TimeColumnReader> m_times;
    std::vector<QualityCode> m_qualityCodes;  // by the plan's qualities, as the next two
    std::vector<QualityReader> m_qualities;
    std::vector<ImportTable::Mark> m_marksOfRow;
    std::vector<std::pair<std::size_t, std::size_t>> m_planned;  // the plan's columns: field → place, in order
    std::vector<CellUnits> m_cellUnits;                          // by the plan's columns, unless rows name quantities
    std::vector<DecimalMark> m_marks;                            // by the plan's columns
    std::vector<DecimalEvidence> m_evidence;                     // the same, from the sample or the whole file
    DecimalMark m_commonMark = DecimalMark::Unknown;
    bool m_marksAreOpen = false;                // the whole file must tell
    std::optional<ImportFinding> m_openNumber;  // one that may be meant either way
    bool m_mustRestart = false;                 // rows were read before that was known
    bool m_isCutShort = false;
    std::unique_ptr<QuantityTable> m_quantities;  // of rows that name their quantity
    ImportFinding m_shortRows{.what = ImportFinding::What::ShortRows};
    std::size_t m_comments = 0, m_headersAgain = 0;
};

}  // namespace plotix
