#include "plugins/PlotixPlugIn/reading/lanes/UnitPrefix.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace plotix {

namespace {

struct Prefix {
    const char* text;
    int exponent;
};

constexpr std::array<Prefix, 9> kPrefixes{Prefix{"p", -12}, Prefix{"n", -9}, Prefix{"µ", -6},
                                          Prefix{"m", -3},  Prefix{"", 0},   Prefix{"k", 3},
                                          Prefix{"M", 6},   Prefix{"G", 9},  Prefix{"T", 12}};

constexpr double kLeast = 0.01;  // numbers between these are written as they are
constexpr double kMost = 10'000;

bool takesPrefix(const QString& base)
{
    static const QStringList bases{
        QStringLiteral("W"),   QStringLiteral("Wh"), QStringLiteral("J"),   QStringLiteral("V"),
        QStringLiteral("A"),   QStringLiteral("VA"), QStringLiteral("var"), QStringLiteral("varh"),
        QStringLiteral("VAh"), QStringLiteral("Ah"), QStringLiteral("m"),   QStringLiteral("g"),
        QStringLiteral("Pa"),  QStringLiteral("Hz"), QStringLiteral("B"),   QStringLiteral("bit"),
        QStringLiteral("Ω"),   QStringLiteral("N"),  QStringLiteral("F"),   QStringLiteral("C"),
        QStringLiteral("H"),   QStringLiteral("T"),  QStringLiteral("S"),   QStringLiteral("Bq")};
    return bases.contains(base);
}

/// Small powers of a thousand of data are no use: there is no millibyte.
bool isCounted(const QString& base)
{
    return base == QLatin1String("B") || base == QLatin1String("bit");
}

}  // namespace

PrefixedUnit prefixedUnit(const QString& symbol, double magnitude)
{
    const PrefixedUnit plain{symbol, 1};
    if (!(magnitude > 0) || !std::isfinite(magnitude) || (magnitude >= kLeast && magnitude < kMost))
        return plain;
    const qsizetype stroke = symbol.indexOf(u'/');
    const QString head = stroke < 0 ? symbol : symbol.first(stroke);
    const QString tail = stroke < 0 ? QString() : symbol.sliced(stroke);
    for (const Prefix& present : kPrefixes) {
        const QString text = QString::fromUtf8(present.text);
        if (!head.startsWith(text) || !takesPrefix(head.sliced(text.size())) || (text.isEmpty() && !takesPrefix(head)))
            continue;
        const QString base = head.sliced(text.size());
        const double inBase = magnitude * std::pow(10.0, present.exponent);
        const int wanted = static_cast<int>(std::floor(std::log10(inBase) / 3)) * 3;
        const int exponent =
            std::clamp(wanted, isCounted(base) ? 0 : kPrefixes.front().exponent, kPrefixes.back().exponent);
        for (const Prefix& other : kPrefixes)
            if (other.exponent == exponent)
                return {QString::fromUtf8(other.text) + base + tail, std::pow(10.0, present.exponent - exponent)};
    }
    return plain;
}

}  // namespace plotix
