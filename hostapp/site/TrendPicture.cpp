#include "hostapp/site/TrendPicture.h"

#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/ViewReport.h"
#include "plugins/PlotixPlugIn/host/PngImage.h"

namespace plotix {

namespace {

QByteArray pngOf(const QImage& image)
{
    return image.isNull() ? QByteArray() : pngOfImage(image);
}

}  // namespace

QByteArray pictureOf(const KTVPlugInPtr& trend, const TrendPicture& picture)
{
    const bool isPdf = picture.format == FileKind::Pdf;
    if (picture.what == TrendPicture::What::GraphAndTable) {
        const ViewReport report(trend, ReportForm::Page, picture.title);
        return isPdf ? report.picturePdf(picture.size) : pngOf(report.picture(picture.size, picture.density));
    }
    // An overview is there to move about, and a picture stands still.
    QVariantMap reading{{QStringLiteral("overview"), QVariantMap()}};
    reading.insert(picture.reading);
    const QVariantMap figure{{QStringLiteral("format"), endingsOf(picture.format).first()},
                             {QStringLiteral("size"), picture.size},
                             {QStringLiteral("density"), picture.density},
                             {QStringLiteral("title"), picture.title},
                             {QStringLiteral("reading"), reading}};
    if (const auto file = graphFile(trend.get(), figure))
        return *file;
    return isPdf ? graphPDF(trend.get(), picture.size, picture.title)
                 : pngOf(graphImage(trend.get(), picture.size, picture.density, picture.title));
}

QByteArray pictureTelling(const KTVPlugInPtr& trend, const TrendPicture& picture)
{
    QByteArray made = pictureOf(trend, picture);
    if (made.isEmpty() || !lacksRecords(trend.get()))
        return made;
    TrendPicture telling = picture;
    telling.title = (picture.title.isEmpty() ? QStringLiteral("%1") : picture.title + QStringLiteral(" – %1"))
                        .arg(QStringLiteral("some records could not be read"));
    return pictureOf(trend, telling);
}

}  // namespace plotix
