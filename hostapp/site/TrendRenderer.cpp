#include "hostapp/site/TrendRenderer.h"

#include "base/ReportableError.h"
#include "hostapp/site/MakeTrend.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ShownTrend.h"
#include "hostapp/site/TrendPicture.h"
#include "hostapp/site/TrendReading.h"
#include "hostapp/site/WaitForRecords.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"
#include "records/store/RecordStore.h"

#include <QtCore/QDateTime>

#include <cmath>

namespace plotix {

namespace {

/// Receives what the off-screen class operation draws.
class ImageReceiver : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE void receiveImage(const QByteArray& png) { m_png = png; }
    const QByteArray& png() const { return m_png; }

private:
    QByteArray m_png;
};

QString momentText(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(seconds * 1000)), Qt::UTC).toString(Qt::ISODate);
}

/// An empty graph would look like records that were lost. Without bounds, or for an agent of no site, nothing is asked.
void requireRecordsToDraw(const TrendRequest& trend)
{
    const auto extent = trend.document ? trend.document->records()->extent(trend.agent->id()) : std::nullopt;
    if (!trend.document || !trend.from || !trend.to)
        return;
    for (const KTVPropertyPtr& property : trend.properties)
        if (const auto* known = dynamic_cast<const SiteProperty*>(property.get()))
            if (trend.document->records()
                    ->statistics(trend.agent->id(), known->description().id, trend.from->seconds, trend.to->seconds)
                    .valid > 0)
                return;
    const QString asked = QStringLiteral("There is no value to draw from %1 to %2")
                              .arg(momentText(trend.from->seconds), momentText(trend.to->seconds));
    throw ReportableError(
        extent ? QStringLiteral("%1; the records of %2 reach from %3 to %4.")
                     .arg(asked, trend.agent->name(), momentText(extent->first), momentText(extent->last))
               : QStringLiteral("%1; %2 has no records.").arg(asked, trend.agent->name()));
}

FileKind kindOf(RenderRequest::Format format)
{
    switch (format) {
    case RenderRequest::Format::Png: return FileKind::Png;
    case RenderRequest::Format::Pdf: return FileKind::Pdf;
    case RenderRequest::Format::Svg: return FileKind::Svg;
    }
    return FileKind::Png;
}

[[noreturn]] void failToDraw(const QSize& size)
{
    throw ReportableError(QStringLiteral("The graph could not be drawn at %1 × %2 points; ask for a smaller size.")
                              .arg(size.width())
                              .arg(size.height()));
}

}  // namespace

QByteArray TrendRenderer::render(const RenderRequest& request) const
{
    requireRecordsToDraw(request.trend);
    return request.bare ? renderBare(request) : renderView(request);
}

QByteArray TrendRenderer::renderView(const RenderRequest& request) const
{
    const KTVPlugInPtr plugIn = requireTrend(*m_module, request.trend);
    chooseReading(plugIn.get(), Reader::OfAPicture);
    setReading(plugIn.get(), request.reading);
    loadViewAtSize(*plugIn, request.size.toSize());
    requireRecords(*request.trend.agent);
    const QByteArray data = pictureOf(plugIn, {.format = kindOf(request.format),
                                               .size = request.size,
                                               .density = request.density,
                                               .title = request.trend.title});
    if (data.isEmpty())
        failToDraw(request.size.toSize());
    requireUnpacked(*request.trend.agent);
    if (!request.hasRecipe || !request.trend.document)
        return data;
    ShownView view = viewOf(plugIn, *request.trend.document);
    if (request.trend.title.isEmpty())
        view.trend = request.trend.agent->name();
    return withRecipe(kindOf(request.format), data, recipeOf(view));
}

QByteArray TrendRenderer::renderBare(const RenderRequest& request) const
{
    QObject* trendClass = m_module->classObject(QString::fromLatin1(kTrendClass));
    QStringList keys;
    for (const KTVPropertyPtr& property : request.trend.properties)
        keys << property->propertyName();
    if (!trendClass || keys.isEmpty())  // without properties the operation never answers
        throw ReportableError(QStringLiteral("There is no property to draw; name some with --properties."));
    ImageReceiver receiver;
    const KTVAgentPtr agent = request.trend.agent;
    const bool sent = QMetaObject::invokeMethod(
        trendClass, "graph", Qt::DirectConnection, Q_ARG(KTVAgentPtr, agent),
        Q_ARG(plotix::OptionalDate, request.trend.from), Q_ARG(plotix::OptionalDate, request.trend.to),
        Q_ARG(QVariant, QVariant(keys)), Q_ARG(QString, request.trend.title), Q_ARG(QSizeF, request.size),
        Q_ARG(QObject*, &receiver), Q_ARG(QByteArray, QByteArrayLiteral("receiveImage")));
    if (!sent)
        throw ReportableError(QStringLiteral("The plug-in module cannot draw off screen; install Plotix again."));
    requireRecords(*request.trend.agent);
    if (receiver.png().isEmpty())
        failToDraw(request.size.toSize());
    requireUnpacked(*request.trend.agent);
    return receiver.png();
}

}  // namespace plotix

#include "TrendRenderer.moc"
