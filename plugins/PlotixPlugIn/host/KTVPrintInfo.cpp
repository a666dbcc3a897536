#include "plugins/PlotixPlugIn/host/KTVPrintInfo.h"

#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

#include <utility>

namespace {

KTVPrintOperation*& theOperation()
{
    static KTVPrintOperation* operation = nullptr;
    return operation;
}

}  // namespace

KTVPrintInfo* KTVPrintInfo::sharedPrintInfo()
{
    return KTVHostServices::installed().printInfo;
}

QSizeF KTVPrintInfo::paperSize() const
{
    const bool isWide = m_paper.width() > m_paper.height();
    const bool wantsWide = m_orientation == KTVPaperOrientation::Landscape;
    return isWide == wantsWide ? m_paper : m_paper.transposed();
}

KTVPrintOperation* KTVPrintOperation::currentOperation()
{
    return theOperation();
}

KTVPrintOperation* KTVPrintOperation::setCurrentOperation(KTVPrintOperation* operation)
{
    return std::exchange(theOperation(), operation);
}
