#pragma once

#include "hostapp/web/WebRange.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <optional>
#include <vector>

/// What the web server knows of a site: enough to list its views and to ask its plug-ins, and no more.
///
/// Implemented in `hostapp/site`; *shared* by the server's threads during a request. Every operation may be called on
/// any thread but the main one, and by several at once; those that say so wait for the main queue.
namespace plotix {

/// A view that the page shows a preview of.
struct WebView {
    QString identifier;  ///< its renderings are IDENTIFIER.png and IDENTIFIER.pdf
    QString title;       ///< plain text
    /// What was written about the times it shows, each as plain text that begins with the number of its flag.
    std::vector<QString> footnotes = {};
    bool lacksRecords = false;  ///< some of what it asked for, or has drawn, could not be read
};

struct WebRendering {
    QByteArray data;
    QString contentType;
};

class WebSite {
public:
    virtual ~WebSite() = default;

    virtual QString name() const = 0;
    virtual std::vector<WebView> views() const = 0;
    /// The same with their footnotes. Waits for the main queue.
    virtual std::vector<WebView> viewsWithFootnotes() const { return views(); }

    /// The plug-ins' fragments of HTML, one after the other, as they are: nothing in them is trusted. Links begin with
    /// `baseUrl`. Waits for the main queue.
    virtual QString advertisement(const QUrl& baseUrl) = 0;

    /// What a plug-in answers to a request for this URL; nothing when none does. Waits for the main queue.
    virtual std::optional<WebRendering> rendering(const QUrl& url) = 0;
    /// The same view over other times, whose records are read for this answer alone; what the view itself shows stays.
    /// Nothing for a view that is not there, or that cannot be drawn. Waits for the main queue.
    virtual std::optional<WebRendering> renderingOver(const WebRange& range, const QUrl& url) = 0;
};

}  // namespace plotix
