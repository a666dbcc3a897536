#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

#include <cstdint>
#include <optional>
#include <vector>

/// Web addresses and HTML fragments as text. Pure: no view, no host, no server. Any thread.
///
/// Nothing is escaped: texts enter the HTML as they are, and whoever serves it has to render it harmless. An absent
/// text reads "(null)".
namespace plotix {

/// The last component of a URL's path, taken apart at its last dot.
struct WebPathName {
    QString identifier;  ///< the component without its extension
    QString extension;   ///< without the dot; empty for none

    friend bool operator==(const WebPathName&, const WebPathName&) = default;
};

/// Slashes at the end are ignored; query and fragment are no part of the path. Percent-decoded once and after the
/// division, so that "%2F" stays in the component. A dot at its very beginning or end begins no extension: ".png" and
/// "name." have none and are identifiers as a whole. A path without a component answers two empty texts.
WebPathName webPathName(const QUrl& url);

/// "BASE/IDENTIFIER.png": a base that ends in a slash gives two.
QString webPlotLink(const QString& baseURL, const QString& identifier);

/// One advertised plot: where it is and what it is called.
struct WebPlot {
    QString link;
    std::optional<QString> title;
};

/// The fragment that lists the plots, in the order given. None: the heading and the sentence alone.
QString webAdvertisement(const std::vector<WebPlot>& plots);

/// A table of one row that names the plug-in's version.
QString plugInHtmlDescription(const std::optional<QString>& shortVersion, std::int64_t version);

}  // namespace plotix
