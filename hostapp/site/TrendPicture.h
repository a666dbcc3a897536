#pragma once

#include "hostapp/core/Defaults.h"
#include "hostapp/core/OutputFile.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

/// A picture of a trend for other programs. Values and a free function; main thread only.
namespace plotix {

struct TrendPicture {
    enum class What {
        Graph,         ///< as on the screen
        GraphAndTable  ///< dark on white, with title, span and figures
    };
    What what = What::Graph;
    FileKind format = FileKind::Png;  ///< or Pdf; of the graph alone also Svg
    QSizeF size = kUsualGraphSize;    ///< points; with a long table it gets higher
    double density = 2;               ///< pixels a point; of PNG alone
    QString title;                    ///< above the graph, which alone has none where it is empty
    QVariantMap reading{};            ///< options of the trend chosen for this picture of its graph alone
};

/// The picture as a file's bytes; empty where there is nothing to draw yet or it would be too large. The trend's
/// records must be there. Throws ReportableError.
QByteArray pictureOf(const KTVPlugInPtr& trend, const TrendPicture& picture);

/// The same for people who see nothing else of the trend: its title says so where records could not be read.
QByteArray pictureTelling(const KTVPlugInPtr& trend, const TrendPicture& picture);

}  // namespace plotix
