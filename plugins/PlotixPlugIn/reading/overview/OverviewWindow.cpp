#include "plugins/PlotixPlugIn/reading/overview/OverviewWindow.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr double kGrab = 5;         // points beside an edge that count as it
constexpr double kLeastWindow = 4;  // points: seen and grabbed, however short the time
constexpr double kAll = 0.98;       // of the strip: such a window is taken for all of it

}  // namespace

double OverviewWindow::xOf(double time) const
{
    return strip.left() + (time - whole.from) / (whole.to - whole.from) * strip.width();
}

double OverviewWindow::timeAt(double x) const
{
    return whole.from + (x - strip.left()) / strip.width() * (whole.to - whole.from);
}

QRectF OverviewWindow::window() const
{
    double left = std::clamp(xOf(shown.from), strip.left(), strip.right());
    double right = std::clamp(xOf(shown.to), strip.left(), strip.right());
    if (right - left < kLeastWindow) {
        left = std::clamp((left + right - kLeastWindow) / 2, strip.left(), strip.right() - kLeastWindow);
        right = left + kLeastWindow;
    }
    return {left, strip.top(), right - left, strip.height()};
}

OverviewWindow::Grip OverviewWindow::gripAt(double x) const
{
    const QRectF drawn = window();
    const bool isWide = drawn.width() > 3 * kGrab;  // else its edges would leave no inside
    if (isWide && std::abs(x - drawn.left()) <= kGrab)
        return Grip::From;
    if (isWide && std::abs(x - drawn.right()) <= kGrab)
        return Grip::To;
    if (drawn.width() >= kAll * strip.width())
        return Grip::Elsewhere;
    return x >= drawn.left() - kGrab && x <= drawn.right() + kGrab ? Grip::Inside : Grip::Elsewhere;
}

TimeSpan OverviewWindow::dragged(Grip grip, double fromX, double toX) const
{
    const double way = timeAt(toX) - timeAt(fromX);
    TimeSpan span = shown;
    switch (grip) {
    case Grip::Inside: span = {shown.from + way, shown.to + way}; break;
    case Grip::From: span.from += way; break;
    case Grip::To: span.to += way; break;
    case Grip::Elsewhere: span = {timeAt(fromX), timeAt(toX)}; break;
    }
    return {std::min(span.from, span.to), std::max(span.from, span.to)};
}

TimeSpan OverviewWindow::centredAt(double x) const
{
    const double half = (shown.to - shown.from) / 2;
    return {timeAt(x) - half, timeAt(x) + half};
}

}  // namespace plotix
