#pragma once

#include <cstddef>
#include <cstdint>

/// Archived doubles become the floats of a series, and the pairs of its index, in one pass over memory.
///
/// Compiled for several processors, chosen at run time (see base/vectors); all give the same bits. Pure; any thread.
namespace plotkit {

/// Where the results go; every pointer is at the first value's element. `least`, `greatest` and `first` have one number
/// for every 32 values: see CPTFineBlocks.
struct NarrowedWords {
    float* y;
    std::uint64_t* points;
    float* least;
    float* greatest;
    float* first;
};

/// What is known of successive runs, and where it goes as floats.
struct RunsToNarrow {
    const double* least;
    const double* greatest;
    const double* first;
};
struct NarrowedRuns {
    float* least;
    float* greatest;
    float* first;
};

struct SeriesNarrowing {
    /// Narrows words of 64 values until one holds a NaN or a value beyond the range of a float, and answers how many
    /// words were done; the rest is untouched. `validity` has a bit for every value that counts; null: all do.
    std::size_t (*narrow)(const double* values, const std::uint64_t* validity, std::size_t words,
                          const NarrowedWords& into);

    /// Narrows all and answers true where least ≤ greatest in every run and all numbers are in the range of a float.
    /// Else answers false, and what it wrote counts for nothing; so it does of few runs.
    bool (*narrowRuns)(const RunsToNarrow& runs, std::size_t count, const NarrowedRuns& into);

    /// The fastest this processor runs. Alive as long as the program.
    static const SeriesNarrowing& best();
};

}  // namespace plotkit
