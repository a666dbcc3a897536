#include "hostapp/site/TrendColors.h"

#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/PropertyPalette.h"

#include <algorithm>

namespace plotix {

namespace {

bool isTaken(const std::vector<QColor>& taken, const QColor& color)
{
    return std::any_of(taken.begin(), taken.end(), [&](const QColor& each) { return each.rgb() == color.rgb(); });
}

}  // namespace

void tellLinesApart(const KTVPropertyList& properties)
{
    std::vector<QColor> all, before;
    for (const KTVPropertyPtr& property : properties)
        all.push_back(property->color());
    for (const KTVPropertyPtr& property : properties) {
        auto* own = dynamic_cast<SiteProperty*>(property.get());
        if (own && isTaken(before, property->color())) {
            const QColor color = freeColor(all);
            if (isTaken(all, color))
                return;  // none is free
            own->setColor(color);
            all.push_back(color);
        }
        before.push_back(property->color());
    }
}

}  // namespace plotix
