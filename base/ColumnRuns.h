#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

/// What is known of long columns without reading them: they are cut into runs of some hundred successive elements, the
/// same for the times and for all columns beside them. Where runs are cut says nothing about the records.
///
/// Values; any thread may read.
namespace plotix {

struct TimeRuns {
    std::vector<std::size_t> begin;   ///< element each run begins with; one more than there are runs: the last is the
                                      ///< count of elements. No run is empty
    std::vector<double> first, last;  ///< times of each run's first and last element

    std::size_t count() const { return first.size(); }
    friend bool operator==(const TimeRuns&, const TimeRuns&) = default;
};

/// Of one column: over the valid elements of each run that are no NaN, as archived. Infinities count.
struct ValueRuns {
    std::vector<double> least, greatest;  ///< least > greatest where no element counts
    std::vector<double> first;            ///< value of the run's first element; NaN where that does not count

    std::size_t count() const { return least.size(); }
    void reserve(std::size_t runs);
    void append(const ValueRuns& next);
};

/// The same in few bytes a run, for a column that is shown in another unit now and then. Immutable and *shared*.
class KeptRuns {
public:
    using Take = std::function<void(const ValueRuns& piece)>;

    virtual ~KeptRuns() = default;
    virtual std::size_t count() const = 0;
    /// All, piece by piece, in order. Where the least or the greatest is NaN, nothing is known of the run.
    virtual void inPieces(const Take& take) const = 0;
    /// Those pieces, in order, that have any of runs [first, end), each with the number of its first run.
    using TakeFrom = std::function<void(const ValueRuns& piece, std::size_t firstRun)>;
    virtual void piecesOf(std::size_t first, std::size_t end, const TakeFrom& take) const;
    /// The same with longer runs, of some ten thousand elements where that is known; without their first values.
    virtual void inLongRuns(const Take& take) const { inPieces(take); }

    /// A copy.
    ValueRuns unpacked() const;

    /// As they are.
    static std::shared_ptr<const KeptRuns> of(ValueRuns runs);
    /// One after the other; *shares* them.
    static std::shared_ptr<const KeptRuns> joined(std::vector<std::shared_ptr<const KeptRuns>> pieces);
};

}  // namespace plotix
