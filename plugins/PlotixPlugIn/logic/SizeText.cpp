#include "plugins/PlotixPlugIn/logic/SizeText.h"

#include <QtCore/QStringList>

#include <array>
#include <charconv>

namespace plotix {
namespace {

// Fixed notation: the general form would write 100000 as "1e+05", which nobody reads as a width.
QString shortestText(double value)
{
    std::array<char, 1200> digits;  // the smallest subnormal needs about 1080 of them
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return QString::fromLatin1(digits.data(), written.ptr - digits.data());
}

}  // namespace

QString stringFromSize(const QSizeF& size)
{
    return QStringLiteral("{%1, %2}").arg(shortestText(size.width()), shortestText(size.height()));
}

QSizeF sizeFromString(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (!trimmed.startsWith(u'{') || !trimmed.endsWith(u'}') || trimmed.size() < 2)
        return {0, 0};
    const QStringList sides = trimmed.sliced(1, trimmed.size() - 2).split(u',');
    if (sides.size() != 2)
        return {0, 0};
    bool widthRead = false, heightRead = false;
    const double width = sides[0].trimmed().toDouble(&widthRead);
    const double height = sides[1].trimmed().toDouble(&heightRead);
    return widthRead && heightRead ? QSizeF(width, height) : QSizeF(0, 0);
}

}  // namespace plotix
