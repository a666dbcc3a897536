#pragma once

#include "base/RecordTimes.h"
#include "base/ValidityBitmap.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class KTVRecordColumn;

/// The records of one line as the figures read them: times and values in double precision, in the unit that was shown
/// when this was made. Paged ones are held where they are read. A value; *shares* the records; any thread once made.
namespace plotix {

class FigureRecords {
public:
    /// Writes elements [first, first + out.size()) in the unit shown, valid or not. Any thread.
    using Conversion = std::function<void(std::size_t first, std::span<double> out)>;

    FigureRecords() = default;
    /// No conversion: the values are in the unit shown. Records beyond the shorter of times and values are left out.
    FigureRecords(RecordTimes times, PagedArray<double> values, ValidityBitmap validity = {},
                  Conversion conversion = {});
    /// Elements of the column that differ from it count as what they are. Main thread.
    FigureRecords(RecordTimes times, const KTVRecordColumn& column);

    std::size_t size() const { return m_size; }
    const RecordTimes& times() const { return m_times; }

    /// Where values that count stand, densely: those that are valid and no NaN.
    struct Points {
        std::span<const double> times, values;
    };
    static constexpr std::size_t kBlock = 4096;  ///< the most elements that are read at once
    struct Held {
        PagedMemory::Hold times, values, validity;
    };
    struct Buffer {
        std::array<double, kBlock> times, values;
        Held held;
    };
    /// The points among elements [first, last); they stand in the records themselves, which the buffer holds until it
    /// is used again, or in the buffer. *Borrows* both.
    /// Requires: last - first ≤ kBlock, last ≤ size().
    Points points(std::size_t first, std::size_t last, Buffer& buffer) const;

    /// The same records in another order, copied; elements that `order` leaves out are gone.
    FigureRecords arranged(const std::vector<std::size_t>& order, const SharedArray<double>& times) const;

private:
    Held hold(std::size_t first, std::size_t last) const;
    bool isAllValid(std::size_t first, std::size_t last) const;
    std::span<const double> values(std::size_t first, std::size_t last, Buffer& buffer) const;

    RecordTimes m_times;
    PagedArray<double> m_values;
    ValidityBitmap m_validity;
    Conversion m_conversion;
    std::size_t m_size = 0;
};

/// The order that sorts `times`, equal ones as they stand, without those that are no numbers; nothing when they are
/// in order already.
std::optional<std::vector<std::size_t>> sortingOrder(std::span<const double> times);

}  // namespace plotix
