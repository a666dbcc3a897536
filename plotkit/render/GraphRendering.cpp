#include "plotkit/render/GraphRendering.h"

#include "plotkit/render/GraphPainter.h"

#include <QtCore/QBuffer>
#include <QtGui/QPageLayout>
#include <QtGui/QPageSize>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtSvg/QSvgGenerator>

#include <cmath>

namespace plotkit {

namespace {

/// Painters cannot address pixels beyond.
constexpr int kLongestSide = 32767;

/// Keeps background, texts and working memory from picture to picture. Holds images only, no fonts, which
/// would have to go before the application does.
GraphPainter& picturePainter()
{
    static GraphPainter painter;
    return painter;
}

constexpr double kPointsPerMetre = 72 / 0.0254;

/// Dots an inch of a PDF page: four a point, the steps that the plots' paths are rounded to.
constexpr int kPageResolution = 288;

bool isDrawable(const QSizeF& size)
{
    return std::isfinite(size.width()) && std::isfinite(size.height()) && !size.isEmpty();
}

/// The same graph gives the same bytes, whenever it is written: the moment of writing is blanked out in place, which
/// keeps every offset in the file.
void removeCreationDate(QByteArray& pdf)
{
    const qsizetype start = pdf.indexOf("/CreationDate (");
    const qsizetype end = start < 0 ? -1 : pdf.indexOf(')', start);
    for (qsizetype index = start; index >= 0 && index <= end; ++index)
        pdf[index] = ' ';
}

/// The generator says sizes of whole dots: the first line of the drawing gets the true ones, and the view box that
/// belongs to them.
void sayExactSize(QByteArray& svg, const QSizeF& size)
{
    const qsizetype from = svg.indexOf("<svg width=");
    const qsizetype to = svg.indexOf(" xmlns=", from);
    if (from < 0 || to < 0)
        return;
    const auto text = [](double length) { return QByteArray::number(length, 'g', 8); };
    constexpr double kMillimetresPerPoint = 25.4 / 72;
    constexpr double kDotsPerPoint = kPageResolution / 72.0;
    svg.replace(from, to - from,
                "<svg width=\"" + text(size.width() * kMillimetresPerPoint) + "mm\" height=\"" +
                    text(size.height() * kMillimetresPerPoint) + "mm\"\n viewBox=\"0 0 " +
                    text(size.width() * kDotsPerPoint) + ' ' + text(size.height() * kDotsPerPoint) + "\"\n");
}

}  // namespace

void paintGraph(QPainter& painter, const CPTXYGraph& graph, const QRectF& rect, DrawingReport report)
{
    if (rect.isEmpty())
        return;
    GraphPainter().paint(painter, graph, rect);
    if (report == DrawingReport::TellDelegates)
        reportFinishedDrawing(graph);
}

QImage imageOfGraph(const CPTXYGraph& graph, const QSizeF& size, double density, DrawingReport report)
{
    if (!isDrawable(size) || !std::isfinite(density) || density <= 0)
        return {};
    const double width = std::round(size.width() * density);
    const double height = std::round(size.height() * density);
    if (width < 1 || height < 1 || width > kLongestSide || height > kLongestSide)
        return {};
    QImage image(int(width), int(height), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(density);
    image.setDotsPerMeterX(int(std::lround(kPointsPerMetre * density)));
    image.setDotsPerMeterY(int(std::lround(kPointsPerMetre * density)));
    QPainter painter(&image);
    if (density < 1)
        painter.scale(density, density);  // of an image's own density the toolkit heeds whole and larger ones alone
    picturePainter().paint(painter, graph, QRectF(QPointF(), size));
    painter.end();
    if (report == DrawingReport::TellDelegates)
        reportFinishedDrawing(graph);
    return image;
}

QByteArray pdfOfGraph(const CPTXYGraph& graph, const QSizeF& size, DrawingReport report)
{
    if (!isDrawable(size))
        return {};
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(kPageResolution);
        writer.setPageSize(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF());
        writer.setTitle(graph.title());
        writer.setCreator(QStringLiteral("Plotix"));
        QPainter painter(&writer);
        painter.scale(kPageResolution / 72.0, kPageResolution / 72.0);
        GraphPainter().paint(painter, graph, QRectF(QPointF(), size));
    }
    removeCreationDate(data);
    if (report == DrawingReport::TellDelegates)
        reportFinishedDrawing(graph);
    return data;
}

QByteArray svgOfGraph(const CPTXYGraph& graph, const QSizeF& size, DrawingReport report)
{
    if (!isDrawable(size))
        return {};
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    {
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        generator.setResolution(kPageResolution);
        generator.setSize((size * (kPageResolution / 72.0)).toSize());
        generator.setTitle(graph.title().isEmpty() ? QStringLiteral("Plotix") : graph.title());
        generator.setDescription(QStringLiteral("Drawn by Plotix"));
        QPainter painter(&generator);
        painter.scale(kPageResolution / 72.0, kPageResolution / 72.0);
        GraphPainter().paint(painter, graph, QRectF(QPointF(), size));
    }
    sayExactSize(data, size);
    if (report == DrawingReport::TellDelegates)
        reportFinishedDrawing(graph);
    return data;
}

}  // namespace plotkit
