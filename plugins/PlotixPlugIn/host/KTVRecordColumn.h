#pragma once

#include "base/ColumnRuns.h"
#include "base/PagedArray.h"
#include "base/ValidityBitmap.h"
#include "plugins/PlotixPlugIn/host/KTVProperty.h"
#include "plugins/PlotixPlugIn/host/KTVPropertyDescription.h"
#include "plugins/PlotixPlugIn/host/KTVUnitModel.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>

/// The snapshots of one property in a record dictionary, as a column.
///
/// Values are kept as archived, contiguous, with a validity bitmap and one descriptor for all of them. The i-th
/// snapshot is made on demand; an element that differs from the descriptor (another colour, another kind, no property
/// at all) is kept as an exception. Values and validity never change and are *shared*; the current unit does change,
/// and is applied when a value is read, so that changing it back and forth loses nothing. A column has at most as many
/// elements as its dictionary has times; a shorter one simply ends earlier.
///
/// Values may be paged. What answers single elements, or copies them, holds them itself; whoever reads the archived
/// values or the bitmap holds them meanwhile. Built on any thread, then main thread only.
class KTVHOST_EXPORT KTVRecordColumn : public std::enable_shared_from_this<KTVRecordColumn> {
public:
    using Descriptor = KTVPropertyDescription;  ///< its unit is the current one at first

    /// `unitModel` is *shared*; it may be null: then no conversion happens and the symbol is the unit's own text.
    KTVRecordColumn(Descriptor descriptor, plotix::PagedArray<double> values, plotix::ValidityBitmap validity,
                    std::shared_ptr<const KTVUnitModel> unitModel);

    std::size_t size() const { return m_values.size(); }
    const Descriptor& descriptor() const { return m_descriptor; }
    const plotix::PagedArray<double>& archivedValues() const { return m_values; }
    const plotix::ValidityBitmap& validity() const { return m_validity; }

    /// Elements whose archived values and bits may be read. Moved, not copied.
    struct [[nodiscard]] Hold {
        plotix::PagedMemory::Hold values, validity;
    };
    bool isResident() const { return m_isResident; }  ///< then everything is held at no cost
    /// Requires: first ≤ end ≤ size().
    Hold hold(std::size_t first, std::size_t end) const { return m_isResident ? Hold() : heldPages(first, end); }

    /// What is known of the archived values without reading them. A value; *shares* the runs.
    struct Known {
        std::shared_ptr<const plotix::KeptRuns> runs;  ///< those of the dictionary's times; of equal values the first
                                                       ///< one of a run stands there. Null: nothing is known
        std::int64_t count = 0;                        ///< of the valid ones that are no NaN
        std::optional<double> sum;                     ///< of these, rounded once; NaN with infinities of both signs
    };
    const Known& known() const { return m_known; }
    void setKnown(Known known) { m_known = std::move(known); }

    QString unit() const { return m_descriptor.unit; }
    QString unitSymbol() const;
    KTVUnitModel::Integral integral() const;  ///< of the current unit; without a unit model in hours
    const std::shared_ptr<const KTVUnitModel>& unitModel() const { return m_unitModel; }  ///< may be null

    /// Changes the current unit of every element, exceptions included.
    void setUnit(const QString& unit);

    /// Changes the colour that the snapshots carry; exceptions keep their own.
    void setColor(const QColor& color) { m_descriptor.color = color; }

    /// Valid by the bitmap and not a NaN. Exceptions are not considered.
    bool isValid(std::size_t index) const;

    /// The value in the current unit. Exceptions are not considered.
    double unitValue(std::size_t index) const;

    /// Values [first, first + out.size()) in the current unit, valid or not. Requires: the range lies inside.
    void copyUnitValues(std::size_t first, std::span<double> out) const;

    /// Archived values of this column in the current unit. Requires: equal lengths.
    void convert(std::span<const double> archived, std::span<double> out) const;

    /// The element at `index`: a snapshot sharing this column, an exception, or null for "not a property". A snapshot
    /// is a view: its `setUnit` changes the whole column, which gives a caller that converts all snapshots one by one
    /// what it expects. The value of an invalid snapshot is NaN. Two calls answer two objects.
    /// Requires: index < size(), and that the column is held by a shared_ptr to non-const.
    KTVPropertyPtr snapshotAt(std::size_t index) const;

    /// Elements that differ, by index; a null pointer stands for "not a property".
    const std::map<std::size_t, KTVPropertyPtr>& exceptions() const { return m_exceptions; }
    /// Requires: index < size().
    void setException(std::size_t index, KTVPropertyPtr snapshot);

    /// From the archived unit to the current one. Identity where units do not convert.
    const KTVUnitModel::Map& map() const { return m_map; }

private:
    Hold heldPages(std::size_t first, std::size_t end) const;
    void prepareMap();

    Descriptor m_descriptor;
    plotix::PagedArray<double> m_values;
    plotix::ValidityBitmap m_validity;
    bool m_isResident;
    Known m_known;
    std::shared_ptr<const KTVUnitModel> m_unitModel;
    KTVUnitModel::Map m_map;  // from the archived unit to the current one
    std::map<std::size_t, KTVPropertyPtr> m_exceptions;
};
