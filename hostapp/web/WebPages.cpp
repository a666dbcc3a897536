#include "hostapp/web/WebPages.h"

namespace plotix {

namespace {

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();  // also quotation marks, so that it may stand in an attribute
}

QByteArray page(const QString& title, const QString& body)
{
    return (QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                           "<meta name=\"color-scheme\" content=\"light dark\">\n<title>") +
            escaped(title) +
            QStringLiteral("</title>\n<link rel=\"icon\" type=\"image/svg+xml\" href=\"/icon.svg\">\n"
                           "<link rel=\"stylesheet\" href=\"/style.css\">\n</head>\n<body>\n") +
            body + QStringLiteral("\n</body>\n</html>\n"))
        .toUtf8();
}

QString countText(std::size_t count)
{
    return count == 1 ? QStringLiteral("1 trend") : QStringLiteral("%1 trends").arg(count);
}

QString siteCard(const OpenSites::Listed& site)
{
    return QStringLiteral("<a class=\"card link\" href=\"/sites/%1/\"><h2>").arg(escaped(site.identifier)) +
           escaped(site.name) + QStringLiteral("</h2><p>%1</p></a>\n").arg(countText(site.viewCount));
}

QString viewCard(const WebView& view)
{
    const QString file = escaped(QString::fromLatin1(QUrl::toPercentEncoding(view.identifier)));
    return QStringLiteral("<figure class=\"card\"><figcaption><h2>") + escaped(view.title) +
           QStringLiteral("</h2><p class=\"formats\"><a href=\"%1.png\" target=\"_blank\">PNG</a> "
                          "<a href=\"%1.pdf\" target=\"_blank\">PDF</a></p></figcaption>\n"
                          "<a href=\"%1.png\" target=\"_blank\"><img src=\"%1.png\" alt=\"")
               .arg(file) +
           escaped(view.title) + QStringLiteral("\"></a></figure>\n");
}

}  // namespace

QByteArray indexPage(const std::vector<OpenSites::Listed>& sites)
{
    QString body = QStringLiteral("<header><h1>Plotix</h1></header>\n<main class=\"grid\">\n");
    for (const OpenSites::Listed& site : sites)
        body += siteCard(site);
    if (sites.empty())
        body += QStringLiteral("<p>No site is open just now.</p>\n");
    return page(QStringLiteral("Plotix"), body + QStringLiteral("</main>"));
}

QByteArray sitePage(const QString& name, const std::vector<WebView>& views, const QString& advertisement)
{
    QString body =
        QStringLiteral("<header><nav><a href=\"/\">All sites</a></nav><h1>") + escaped(name) +
        QStringLiteral("</h1><p>%1</p></header>\n<main>\n<div class=\"previews\">\n").arg(countText(views.size()));
    for (const WebView& view : views)
        body += viewCard(view);
    body += QStringLiteral("</div>\n<section class=\"advertisement\">\n") + advertisement +
            QStringLiteral("\n</section>\n</main>");
    return page(name + QStringLiteral(" – Plotix"), body);
}

QByteArray messagePage(const QString& title, const QString& text)
{
    return page(title, QStringLiteral("<header><h1>") + escaped(title) + QStringLiteral("</h1></header>\n<main><p>") +
                           escaped(text) + QStringLiteral("</p></main>"));
}

QByteArray styleSheet()
{
    return R"(:root {
  color-scheme: light dark;
  --ground: #f3f4f6; --card: #ffffff; --text: #1c1f24; --faint: #626a76; --line: #dde1e7; --link: #0b62c4;
}
@media (prefers-color-scheme: dark) {
  :root { --ground: #14171b; --card: #1e2228; --text: #e8eaed; --faint: #9aa3af; --line: #30363f; --link: #7db8ff; }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; max-width: 84rem; padding: 0 1rem 3rem;
  background: var(--ground); color: var(--text);
  font: 1rem/1.5 -apple-system, "Segoe UI", Roboto, "Liberation Sans", Arial, sans-serif;
}
a { color: var(--link); }
header { padding: 1.5rem 0 1rem; }
header h1 { margin: 0; font-size: 1.6rem; line-height: 1.25; overflow-wrap: anywhere; }
header p, .card p { margin: 0; color: var(--faint); }
nav { font-size: 0.9rem; margin-bottom: 0.4rem; }
.grid, .previews { display: grid; gap: 1rem; grid-template-columns: repeat(auto-fill, minmax(min(100%, 18rem), 1fr)); }
.previews { grid-template-columns: repeat(auto-fill, minmax(min(100%, 34rem), 1fr)); }
.card {
  margin: 0; padding: 1rem; background: var(--card); color: var(--text);
  border: 1px solid var(--line); border-radius: 12px; min-width: 0;
}
.card.link { display: block; text-decoration: none; }
.card.link:hover, .card.link:focus-visible { border-color: var(--link); }
.card h2 { margin: 0; font-size: 1.05rem; overflow-wrap: anywhere; }
figcaption { display: flex; gap: 1rem; align-items: baseline; justify-content: space-between; margin-bottom: 0.75rem; }
.formats { white-space: nowrap; }
.formats a { display: inline-block; padding: 0.25rem 0.5rem; }
.card img {
  display: block; width: 100%; height: auto; min-height: 4rem;
  border-radius: 8px; background: var(--ground);
}
.advertisement {
  margin-top: 2rem; padding: 1rem; border-top: 1px solid var(--line); color: var(--faint); overflow-wrap: anywhere;
}
.advertisement h1 { margin: 0 0 0.25rem; font-size: 1.05rem; color: var(--text); }
.advertisement h2 { margin: 0.35rem 0; font-size: 1rem; font-weight: 500; }
)";
}

QByteArray iconImage()
{
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32"><rect width="32" height="32" rx="7" )"
           R"(fill="#22262c"/><path d="M5 22l6-8 5 4 5-10 6 7" fill="none" stroke="#5fb0ff" stroke-width="3" )"
           R"(stroke-linecap="round" stroke-linejoin="round"/></svg>)";
}

}  // namespace plotix
