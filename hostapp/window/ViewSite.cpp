#include "hostapp/window/ViewSite.h"

#include "hostapp/site/ViewLink.h"
#include "hostapp/window/RecentSites.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtWidgets/QFileDialog>

namespace plotix {

namespace {

class ViewSiteText {
    Q_DECLARE_TR_FUNCTIONS(ViewSiteText)
};

constexpr qint64 kMostBytes = 1 << 29;  // no figure is as large

}  // namespace

QString siteToShow(const ShownView& view, const QString& folder, QWidget* parent)
{
    const QStringList folders = folder.isEmpty() ? QStringList() : QStringList(folder);
    if (const auto found = siteOfView(view, folders, recentSites()))
        return *found;
    const QString title = ViewSiteText::tr("Where Is “%1”, Which “%2” Is Part Of?").arg(view.siteFile, view.trend);
    return QFileDialog::getOpenFileName(parent, title, folder, ViewSiteText::tr("Sites (*.plotix)"));
}

bool isFigure(const QString& path)
{
    const FileKind kind = kindOfFile(path);
    return kind == FileKind::Png || kind == FileKind::Pdf || kind == FileKind::Svg;
}

std::optional<ShownView> viewInFile(const QString& path)
{
    QFile file(path);
    if (!isFigure(path) || file.size() > kMostBytes || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return viewInFigure(file.readAll());
}

}  // namespace plotix
