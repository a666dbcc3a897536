#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/// The times that a request wants to see, where it names some: `?from=2013-07-01T00:00:00Z&to=2013-07-08`, as links to
/// views have them. Values and free functions; any thread.
namespace plotix {

/// Seconds since 1970-01-01 UTC; from < to.
struct WebRange {
    double from = 0, to = 0;

    friend bool operator==(const WebRange&, const WebRange&) = default;
};

struct AskedRange {
    std::optional<WebRange> range;  ///< nothing: what the view shows
    QString problem;                ///< a sentence for people about what cannot be read; else empty
};

/// Times are ISO 8601, with their distance from UTC or by this machine's clock. A date alone means its beginning as
/// `from`, and the whole day as `to`.
AskedRange rangeAsked(const QByteArray& query);

/// The query that asks for it, with "?": in UTC, to the millisecond.
QString queryOf(const WebRange& range);

}  // namespace plotix
