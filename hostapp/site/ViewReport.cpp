#include "hostapp/site/ViewReport.h"

#include "base/ReportableError.h"
#include "base/ZoneNames.h"
#include "hostapp/print/PageReport.h"
#include "hostapp/print/ReportPrinter.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/SourceListModel.h"
#include "plugins/PlotixPlugIn/host/KTVPrintInfo.h"

#include <QtCore/QCoreApplication>

namespace plotix {

namespace {

ReportContents::Row rowFrom(const QVariantMap& row)
{
    return {row.value(QStringLiteral("color")).value<QColor>(), row.value(QStringLiteral("name")).toString(),
            row.value(QStringLiteral("unit")).toString(),       row.value(QStringLiteral("minimum")).toDouble(),
            row.value(QStringLiteral("maximum")).toDouble(),    row.value(QStringLiteral("average")).toDouble(),
            row.value(QStringLiteral("points")).toLongLong(),   row.value(QStringLiteral("figures")).toStringList()};
}

std::optional<double> timeFrom(const QVariantMap& contents, const char* name)
{
    const QVariant time = contents.value(QLatin1String(name));
    return time.isValid() ? std::optional(time.toDouble()) : std::nullopt;
}

}  // namespace

ViewReport::ViewReport(KTVPlugInPtr view, ReportForm wanted, QString title)
    : m_view(std::move(view)),
      m_form(canPrintOnPage(m_view.get()) ? wanted : ReportForm::Classic),
      m_title(std::move(title))
{
}

int ViewReport::print(QPagedPaintDevice& device) const
{
    return m_form == ReportForm::Page ? PageReport(contents()).print(device)
                                      : ReportPrinter(m_view, graphForPaper).print(device);
}

QByteArray ViewReport::pdf() const
{
    return m_form == ReportForm::Page ? PageReport(contents()).pdf(KTVPrintInfo::sharedPrintInfo()->paperSize())
                                      : ReportPrinter(m_view, graphForPaper).pdf();
}

QImage ViewReport::picture(const QSizeF& size, double density) const
{
    return PageReport(contents()).picture(size, density);
}

QByteArray ViewReport::picturePdf(const QSizeF& size) const
{
    return PageReport(contents()).picturePdf(size);
}

ReportContents ViewReport::contents() const
{
    const QVariantMap given = reportContents(m_view.get());
    if (given.isEmpty())
        throw ReportableError(
            QCoreApplication::translate("ReportPrinter", "“%1” shows no records: choose another span of time.")
                .arg(titleOf(*m_view)));
    ReportContents contents;
    contents.title = m_title.isEmpty() ? titleOf(*m_view) : m_title;
    contents.siteName = given.value(QStringLiteral("siteName")).toString();
    contents.siteLocation = given.value(QStringLiteral("siteLocation")).toString();
    contents.from = given.value(QStringLiteral("from")).toDouble();
    contents.to = given.value(QStringLiteral("to")).toDouble();
    contents.zone = zoneNamed(given.value(QStringLiteral("zone")).toString()).value_or(QTimeZone());
    contents.hasTwentyFourHours = given.value(QStringLiteral("twentyFourHours")).toBool();
    contents.firstRecord = timeFrom(given, "firstRecord");
    contents.lastRecord = timeFrom(given, "lastRecord");
    contents.areUnitsInGraph = given.value(QStringLiteral("unitsInGraph")).toBool();
    contents.outside = given.value(QStringLiteral("outside")).toStringList();
    contents.figureTitles = given.value(QStringLiteral("figureTitles")).toStringList();
    contents.about = given.value(QStringLiteral("about")).toString();
    for (const QVariant& row : given.value(QStringLiteral("rows")).toList())
        contents.rows.push_back(rowFrom(row.toMap()));
    for (const QVariant& told : given.value(QStringLiteral("notes")).toList()) {
        const QVariantMap note = told.toMap();
        contents.footnotes.push_back(
            {note.value(QStringLiteral("number")).toInt(), note.value(QStringLiteral("time")).toString(),
             note.value(QStringLiteral("text")).toString(), note.value(QStringLiteral("author")).toString()});
    }
    contents.drawGraph = [view = m_view](QPainter& painter, const QRectF& rect) {
        drawGraphOnPaper(view.get(), painter, rect);
    };
    return contents;
}

}  // namespace plotix
