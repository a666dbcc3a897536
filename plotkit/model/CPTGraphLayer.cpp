#include "plotkit/model/CPTGraphLayer.h"

CPTGraphLayer::~CPTGraphLayer() = default;

std::optional<CPTLayerRoom> CPTGraphLayer::room(const QSizeF& /*frame*/) const
{
    return std::nullopt;
}

void CPTGraphLayer::setNeedsDisplay() const
{
    if (m_changeHandler)
        m_changeHandler();
}
