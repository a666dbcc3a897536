#include "hostapp/web/WebPages.h"

#include <QtCore/QFile>

// Outside the namespace, where the macro's function lives: a static library's resources join the program only when
// somebody names them.
static void joinPageResources()
{
    Q_INIT_RESOURCE(WebPages);
}

namespace plotix {

namespace {

QByteArray contentsOf(const char* name)
{
    static const bool joined = (joinPageResources(), true);
    Q_UNUSED(joined);
    QFile file(QStringLiteral(":/plotix/web/pages/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A file of pages/ with %1, %2 … replaced, all at once, since an inserted text may itself contain "%1".
template <typename... Texts>
QString filled(const char* name, const Texts&... texts)
{
    return QString::fromUtf8(contentsOf(name)).arg(texts...);
}

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();  // also quotation marks, so that it may stand in an attribute
}

QByteArray page(const QString& title, const QString& body)
{
    return filled("page.html", escaped(title), body).toUtf8();
}

QString countText(std::size_t count)
{
    return count == 1 ? QStringLiteral("1 trend") : QStringLiteral("%1 trends").arg(count);
}

QString siteCard(const OpenSites::Listed& site)
{
    return filled("site_card.html", escaped(site.identifier), escaped(site.name), countText(site.viewCount));
}

QString viewCard(const WebView& view, const QString& query)
{
    const QString file = escaped(QString::fromLatin1(QUrl::toPercentEncoding(view.identifier)));
    QString notes;
    if (query.isEmpty() && view.lacksRecords)
        notes += QStringLiteral("<p class=\"footnote\">Some records could not be read.</p>\n");
    if (query.isEmpty())  // they are about the times that the view itself shows
        for (const QString& note : view.footnotes)
            notes += QStringLiteral("<p class=\"footnote\">%1</p>\n").arg(escaped(note));
    return filled("view_card.html", file, escaped(view.title), notes, escaped(query));
}

}  // namespace

QByteArray indexPage(const std::vector<OpenSites::Listed>& sites)
{
    QString cards = sites.empty() ? QString::fromUtf8(contentsOf("no_site.html")) : QString();
    for (const OpenSites::Listed& site : sites)
        cards += siteCard(site);
    return page(QStringLiteral("Plotix"), filled("index.html", cards));
}

QByteArray sitePage(const QString& name, const std::vector<WebView>& views, const QString& advertisement,
                    const std::optional<WebRange>& range)
{
    QString cards;
    for (const WebView& view : views)
        cards += viewCard(view, range ? queryOf(*range) : QString());
    return page(name + QStringLiteral(" – Plotix"),
                filled("site.html", escaped(name), countText(views.size()), cards, advertisement));
}

QByteArray messagePage(const QString& title, const QString& text)
{
    return page(title, filled("message.html", escaped(title), escaped(text)));
}

QByteArray styleSheet()
{
    return contentsOf("style.css");
}

QByteArray iconImage()
{
    return contentsOf("icon.svg");
}

}  // namespace plotix
