#include "plugins/PlotixPlugIn/logic/ColorText.h"

namespace plotix {

QString colorText(const QColor& color)
{
    if (!color.isValid())
        return QStringLiteral("(null)");
    const QString channels = QStringLiteral("%1, %2, %3").arg(color.red()).arg(color.green()).arg(color.blue());
    if (color.alpha() == 255)
        return QStringLiteral("rgb(%1)").arg(channels);
    return QStringLiteral("rgba(%1, %2)").arg(channels, QString::number(color.alpha() / 255.0, 'f', 2));
}

}  // namespace plotix
