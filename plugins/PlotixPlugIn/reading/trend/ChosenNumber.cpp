#include "plugins/PlotixPlugIn/reading/trend/ChosenNumber.h"

namespace plotix {

std::optional<double> chosenNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong: return value.toDouble();
    default: return std::nullopt;
    }
}

}  // namespace plotix
