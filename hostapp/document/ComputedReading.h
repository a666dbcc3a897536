#pragma once

#include "hostapp/formulas/FormulaDirectory.h"
#include "hostapp/formulas/FormulaPlan.h"
#include "hostapp/formulas/FormulaSeries.h"
#include "records/store/RecordStore.h"

#include <map>
#include <set>

/// One read with computed properties in it: collects what has to be read, reads each part once, works formulas out.
///
/// *Borrows* store and directory. One thread, one read. Throws FormulaNotWorkedOut when it is made.
namespace plotix {

/// Of a computed property. Throws FormulaNotWorkedOut.
std::shared_ptr<const FormulaProgram> programOf(const FormulaDirectory& directory, RowId property);

class ComputedReading {
public:
    ComputedReading(RecordStore& stored, const FormulaDirectory& directory, const RecordPart& wanted);

    /// Recorded properties alone, of all agents.
    std::vector<RecordPart> parts() const;
    /// Nothing when it was stopped.
    std::optional<RecordBlock> read(const ArchiveProgress& progress);
    /// The same values to the bit as promises, gone through once: nothing is in memory but pages, and little of each.
    std::optional<RecordColumns> columns(const std::shared_ptr<PageCache>& cache, const ArchiveProgress& progress);

private:
    class Paged;
    /// Times as bounds: infinite where they are open.
    struct Span {
        double from = 0, to = 0;
        friend auto operator<=>(const Span&, const Span&) = default;
    };
    struct Read {
        std::set<RowId> properties;
        std::optional<Span> within;  // a longer one that is read instead
        RecordBlock block;
    };
    static std::optional<double> bound(double time);
    static Span around(const FormulaProgram& program, const Span& span);
    void collect(RowId agent, RowId property, const Span& span);
    void shareReads();  // what lies within a part that is hardly longer is not read twice
    bool readParts(const ArchiveProgress& progress);
    std::optional<FormulaSeries> series(RowId agent, RowId property, const Span& span);
    FormulaSeries recorded(RowId agent, RowId property, const Span& span) const;
    std::optional<FormulaSeries> computed(RowId property, const Span& span);
    RecordBlock together(const std::vector<FormulaSeries>& columns) const;

    RecordStore& m_stored;
    const FormulaDirectory& m_directory;
    RecordPart m_wanted;
    Span m_span;
    std::map<RowId, std::shared_ptr<const FormulaProgram>> m_programs;
    std::map<std::pair<RowId, Span>, Read> m_parts;  // by agent
    std::set<std::pair<RowId, Span>> m_collected;    // computed properties
    std::map<std::pair<RowId, Span>, FormulaSeries> m_done;
    std::function<bool()> m_goesOn;
};

}  // namespace plotix
