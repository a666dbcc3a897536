#include "plugins/PlotixPlugIn/logic/WebText.h"

namespace plotix {

namespace {

const QChar kSlash = QLatin1Char('/');

QString orNull(const std::optional<QString>& text)
{
    return text.value_or(QStringLiteral("(null)"));
}

QString lastPathComponent(const QUrl& url)
{
    QString path = url.path(QUrl::FullyEncoded);
    while (path.endsWith(kSlash))
        path.chop(1);
    return QUrl::fromPercentEncoding(path.mid(path.lastIndexOf(kSlash) + 1).toLatin1());
}

}  // namespace

WebPathName webPathName(const QUrl& url)
{
    const QString component = lastPathComponent(url);
    const qsizetype dot = component.lastIndexOf(QLatin1Char('.'));
    if (dot <= 0 || dot == component.size() - 1)
        return {component, {}};
    return {component.first(dot), component.sliced(dot + 1)};
}

QString webPlotLink(const QString& baseURL, const QString& identifier)
{
    return baseURL + kSlash + identifier + QStringLiteral(".png");
}

QString webAdvertisement(const std::vector<WebPlot>& plots)
{
    QString html = QStringLiteral("<h1>REST API for Plotix</h1>"
                                  "You can view PNG representations of this Site Document's available Plotix plots "
                                  "here.<p>");
    for (const WebPlot& plot : plots)
        html += QStringLiteral("<h2><a href=\"") + plot.link + QStringLiteral("\" target=\"_blank\">") +
                orNull(plot.title) + QStringLiteral("</a></h2>");
    return html;
}

QString plugInHtmlDescription(const std::optional<QString>& shortVersion, std::int64_t version)
{
    return QStringLiteral("<table><tr><th colspan=2 align=center>Plotix Plug-In - Version ") + orNull(shortVersion) +
           QStringLiteral(" (") + QString::number(version) + QStringLiteral(")</th></tr></table>");
}

}  // namespace plotix
