#include "plotkit/model/CPTAxis.h"

CPTXYAxis::CPTXYAxis(CPTCoordinate coordinate)
    : m_coordinate(coordinate), m_labelFormatter(std::make_shared<CPTNumberFormatter>(QStringLiteral("#.#"), 1))
{
}

void CPTXYAxis::takeStyleOf(const CPTXYAxis& other)
{
    m_labelTextStyle = other.m_labelTextStyle;
    m_titleTextStyle = other.m_titleTextStyle;
    m_tickDirection = other.m_tickDirection;
    m_axisLineStyle = other.m_axisLineStyle;
    m_majorGridLineStyle = other.m_majorGridLineStyle;
    m_minorGridLineStyle = other.m_minorGridLineStyle;
    m_majorTickLineStyle = other.m_majorTickLineStyle;
    m_minorTickLineStyle = other.m_minorTickLineStyle;
    m_majorTickLength = other.m_majorTickLength;
    m_minorTickLength = other.m_minorTickLength;
    if (m_changeHandler)
        m_changeHandler();
}
