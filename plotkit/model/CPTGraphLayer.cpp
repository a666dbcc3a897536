#include "plotkit/model/CPTGraphLayer.h"

CPTGraphLayer::~CPTGraphLayer() = default;

void CPTGraphLayer::setNeedsDisplay() const
{
    if (m_changeHandler)
        m_changeHandler();
}
