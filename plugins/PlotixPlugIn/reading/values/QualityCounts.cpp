#include "plugins/PlotixPlugIn/reading/values/QualityCounts.h"

#include "base/PagedReading.h"

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr std::size_t kWord = 64;

struct Places {
    std::size_t begin = 0, end = 0;
};

/// Of elements that the column has.
Places placesOf(const RecordTimes& times, const KTVRecordColumn& column, double from, double to)
{
    const std::size_t count = std::min(times.size(), column.size());
    const std::size_t begin = times.firstNotEarlier(from, count);
    return {begin, std::max(begin, times.firstLater(to, count))};
}

/// Known without reading any of it.
bool isAllValid(const KTVRecordColumn& column)
{
    return column.validity().isAllValid() ||
           (column.known().runs && column.known().count == static_cast<std::int64_t>(column.size()));
}

/// A value that came and was marked has it still; what never came is a NaN.
std::int64_t notValidIn(const KTVRecordColumn& column, const Places& places)
{
    if (isAllValid(column))
        return 0;
    const ValidityBitmap& validity = column.validity();
    std::int64_t count = 0;
    inStretches(column, places.begin, places.end, [&](std::size_t first, std::size_t end) {
        for (std::size_t element = first; element < end; ++element) {
            const bool isWholeWord = element % kWord == 0 && validity.words()[element / kWord] == ~std::uint64_t{0};
            if (isWholeWord)
                element += kWord - 1;
            else
                count += !validity.isValid(element) && !std::isnan(column.archivedValues()[element]) ? 1 : 0;
        }
    });
    return count;
}

std::int64_t recordedIn(const KTVRecordColumn& column, const Places& places)
{
    std::int64_t count = 0;
    inStretches(column.archivedValues(), places.begin, places.end, [&](std::size_t first, std::size_t end) {
        const auto values = column.archivedValues().span().subspan(first, end - first);
        count += std::count_if(values.begin(), values.end(), [](double value) { return !std::isnan(value); });
    });
    return count;
}

/// Each record once, however many stretches it lies in.
std::int64_t amendedIn(const KTVRecordColumn& column, const RecordTimes& times, const TimeSpan& within,
                       std::vector<KTVAmendment> amendments, KTVAmendment::Kind kind)
{
    std::erase_if(amendments, [kind](const KTVAmendment& amendment) { return amendment.kind != kind; });
    std::sort(amendments.begin(), amendments.end(),
              [](const KTVAmendment& one, const KTVAmendment& other) { return one.from < other.from; });
    std::int64_t count = 0;
    std::size_t counted = 0;  // up to this place
    for (const KTVAmendment& amendment : amendments) {
        Places places =
            placesOf(times, column, std::max(amendment.from, within.from), std::min(amendment.to, within.to));
        places.begin = std::max(places.begin, counted);
        if (places.begin >= places.end)
            continue;
        count += recordedIn(column, places);
        counted = places.end;
    }
    return count;
}

}  // namespace

QualityCounts countQuality(const KTVRecordColumn& column, const RecordTimes& times, const TimeSpan& within,
                           const std::vector<KTVAmendment>& amendments)
{
    return {notValidIn(column, placesOf(times, column, within.from, within.to)),
            amendedIn(column, times, within, amendments, KTVAmendment::Kind::Late),
            amendedIn(column, times, within, amendments, KTVAmendment::Kind::Corrected)};
}

}  // namespace plotix
