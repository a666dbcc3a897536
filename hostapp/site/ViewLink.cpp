#include "hostapp/site/ViewLink.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtCore/QUrlQuery>

namespace plotix {

namespace {

const QString kScheme = QStringLiteral("plotix:");  // sent about, as the names below: never change

QString encoded(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, " "));
}

/// A name of a file, whatever folders somebody put before it.
QString withoutFolders(const QString& name)
{
    return QFileInfo(QString(name).replace(u'\\', u'/')).fileName();
}

}  // namespace

QString linkOf(const ShownView& view)
{
    QStringList keys;
    for (const QString& key : view.properties)
        keys << encoded(key);
    QString link = kScheme + encoded(view.siteFile).replace(u' ', QStringLiteral("%20"));
    link += QStringLiteral("?trend=") + encoded(view.trend).replace(u' ', u'+') + QStringLiteral("&agent=") +
            encoded(view.agent).replace(u' ', u'+') + QStringLiteral("&properties=") + keys.join(u',');
    if (view.from && view.to)
        link += QStringLiteral("&from=") + textOfMoment(*view.from) + QStringLiteral("&to=") + textOfMoment(*view.to);
    return link;
}

std::optional<ShownView> viewInLink(const QString& link)
{
    if (!link.startsWith(kScheme))
        return std::nullopt;
    const QString rest = link.mid(kScheme.size()).trimmed();
    const qsizetype mark = rest.indexOf(u'?');
    const QUrlQuery query(mark < 0 ? QString() : rest.mid(mark + 1).replace(u'+', QStringLiteral("%20")));
    const auto value = [&query](const char* name) {
        return query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
    };
    ShownView view;
    view.siteFile = withoutFolders(QUrl::fromPercentEncoding(rest.left(mark < 0 ? rest.size() : mark).toUtf8()));
    view.trend = value("trend");
    view.agent = value("agent");
    view.properties = value("properties").split(u',', Qt::SkipEmptyParts);
    view.from = momentOfText(value("from"));
    view.to = momentOfText(value("to"));
    if (view.siteFile.isEmpty() || view.agent.isEmpty() || view.properties.isEmpty())
        return std::nullopt;
    return view;
}

std::optional<QString> siteOfView(const ShownView& view, const QStringList& folders, const QStringList& sites)
{
    const QString name = withoutFolders(view.siteFile);
    if (name.isEmpty())
        return std::nullopt;
    for (const QString& folder : folders)
        if (QFileInfo(QDir(folder).filePath(name)).isFile())
            return QDir(folder).filePath(name);
    for (const QString& site : sites)
        if (QFileInfo(site).fileName() == name)
            return site;
    return std::nullopt;
}

}  // namespace plotix
