#include "plugins/PlotixPlugIn/reading/lanes/LaneFormatters.h"

#include "plotkit/model/CPTTickFormatters.h"

#include <cmath>

namespace plotix {

namespace {

class ScaledFormatter : public CPTTickNumberFormatter {
public:
    explicit ScaledFormatter(double factor) : m_factor(factor) {}
    QString stringForNumber(double number) const override
    {
        return CPTTickNumberFormatter::stringForNumber(number * m_factor);
    }
    QString stringForTick(double number, double step) const override
    {
        return CPTTickNumberFormatter::stringForTick(number * m_factor, step * m_factor);
    }

private:
    double m_factor;
};

class PowerFormatter : public CPTTickNumberFormatter {
public:
    QString stringForNumber(double number) const override
    {
        return CPTTickNumberFormatter::stringForNumber(std::pow(10.0, number));
    }
    /// Written exactly: 0.002, 1, 50,000.
    QString stringForTick(double number, double /*step*/) const override
    {
        const double decade = std::pow(10.0, std::floor(number + 1e-9));
        return CPTTickNumberFormatter::stringForTick(std::pow(10.0, number), decade);
    }
};

}  // namespace

CPTFormatterPtr laneFormatter(bool isLogarithmic, double factor)
{
    if (isLogarithmic)
        return std::make_shared<const PowerFormatter>();
    if (factor == 1)
        return std::make_shared<const CPTTickNumberFormatter>();
    return std::make_shared<const ScaledFormatter>(factor);
}

}  // namespace plotix
