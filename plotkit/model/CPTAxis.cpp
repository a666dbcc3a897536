#include "plotkit/model/CPTAxis.h"

CPTXYAxis::CPTXYAxis(CPTCoordinate coordinate)
    : m_coordinate(coordinate), m_labelFormatter(std::make_shared<CPTNumberFormatter>(QStringLiteral("#.#"), 1))
{
}
