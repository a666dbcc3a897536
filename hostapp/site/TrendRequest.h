#pragma once

#include "base/Date.h"
#include "hostapp/core/Defaults.h"
#include "hostapp/document/SiteDocument.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>

/// Describes a wanted trend, and a picture of it. Values; main thread, as the agent and its properties.
namespace plotix {

/// A trend of some of an agent's properties over a fixed range.
struct TrendRequest {
    std::shared_ptr<SiteDocument> document;
    std::shared_ptr<SiteAgent> agent;
    KTVPropertyList properties;  ///< the agent's own objects, in the order asked
    OptionalDate from, to;       ///< absent: the plug-in's own default
    QString title;               ///< empty: none
    QString look = {};           ///< that of the window it is made in, such as "light"; empty: the plug-in's own
};

/// A trend drawn into a file.
struct RenderRequest {
    enum class Format { Png, Pdf, Svg };

    TrendRequest trend;
    QSizeF size = kUsualGraphSize;  ///< points
    double density = 1;             ///< of a PNG: pixels a point
    Format format = Format::Png;
    QVariantMap reading;    ///< options chosen for this picture, by name
    bool hasRecipe = true;  ///< the file tells what it shows, see FigureRecipe.h
    bool bare = false;      ///< through the off-screen class operation: theme axes only; always Png
};

}  // namespace plotix
