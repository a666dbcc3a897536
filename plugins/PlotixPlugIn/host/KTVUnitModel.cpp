#include "plugins/PlotixPlugIn/host/KTVUnitModel.h"

KTVUnitModel::~KTVUnitModel() = default;

KTVUnitModel::Integral KTVUnitModel::integralOf(const QString& unit) const
{
    return integralInHours(symbolForUnit(unit));
}

KTVUnitModel::Integral KTVUnitModel::integralInHours(const QString& symbol)
{
    constexpr double secondsAnHour = 3600;
    return {symbol.isEmpty() ? QStringLiteral("h") : symbol + QStringLiteral("·h"), 1 / secondsAnHour};
}
