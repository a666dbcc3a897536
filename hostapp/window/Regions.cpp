#include "hostapp/window/Regions.h"

#include <QtCore/QVariant>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <vector>

namespace plotix {

namespace {

bool takesTheFocus(const QWidget& widget)
{
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

/// The region, or the first of its parts in the order of Tab; null if none can be focused.
QWidget* entranceOf(QWidget& region)
{
    if (takesTheFocus(region))
        return &region;
    for (QWidget* next = region.nextInFocusChain(); next && next != &region; next = next->nextInFocusChain())
        if (region.isAncestorOf(next) && takesTheFocus(*next))
            return next;
    return nullptr;
}

std::vector<QWidget*> regionsOf(const QWidget& window)
{
    std::vector<QWidget*> regions;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->property(kRegionProperty).isValid() && widget->window() == &window && entranceOf(*widget))
            regions.push_back(widget);
    std::stable_sort(regions.begin(), regions.end(), [](const QWidget* left, const QWidget* right) {
        return left->property(kRegionProperty).toInt() < right->property(kRegionProperty).toInt();
    });
    return regions;
}

}  // namespace

void focusRegion(QWidget& window, RegionStep step)
{
    const std::vector<QWidget*> regions = regionsOf(window);
    if (regions.empty())
        return;
    const QWidget* focus = window.focusWidget();
    const auto here = std::find_if(regions.begin(), regions.end(), [focus](const QWidget* region) {
        return focus && (region == focus || region->isAncestorOf(focus));
    });
    const std::size_t count = regions.size();
    const std::size_t last = count - 1;
    std::size_t wanted = step == RegionStep::Next ? 0 : last;
    if (here != regions.end())
        wanted = (static_cast<std::size_t>(here - regions.begin()) + (step == RegionStep::Next ? 1 : last)) % count;
    entranceOf(*regions[wanted])->setFocus(step == RegionStep::Next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

}  // namespace plotix
