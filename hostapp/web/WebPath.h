#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/// What the path of a request asks for. Pure; any thread.
namespace plotix {

struct WebPath {
    enum class Kind {
        Index,      ///< `/`
        Site,       ///< `/sites/ID/`
        SiteBare,   ///< `/sites/ID`, whose final slash is missing
        Rendering,  ///< `/sites/ID/…/NAME.EXTENSION`, whatever stands between
        Style,      ///< `/style.css`
        Icon,       ///< `/icon.svg`, `/favicon.ico`
        Nothing,    ///< anything else
    };

    Kind kind = Kind::Nothing;
    QString site;  ///< of Site, SiteBare and Rendering
};

/// Every segment is percent-decoded once, after the path was cut at its slashes. A decoded segment with a slash, a
/// backslash, a control character or invalid UTF-8, a segment "." or "..", and a broken escape make the whole path
/// Nothing: no path leads out of its site. Empty segments are ignored, since base URLs may have doubled slashes. `path`
/// is the request's own text, without query.
WebPath webPathFrom(const QByteArray& path);

/// A text percent-decoded once; nothing for broken escapes, control characters and invalid UTF-8.
std::optional<QString> percentDecodedOnce(const QByteArray& text);

/// The path without its query, and the query without its "?"; both end before a fragment, which no client sends.
QByteArray pathOf(const QByteArray& requestTarget);
QByteArray queryOf(const QByteArray& requestTarget);

/// The query's first value of that name, percent-decoded once; nothing when there is none.
std::optional<QString> queryValue(const QByteArray& query, const QByteArray& name);

}  // namespace plotix
