#include "hostapp/print/PagesToPrint.h"

#include "base/ReportableError.h"

#include <QtCore/QCoreApplication>
#include <QtPrintSupport/QPrinter>

#include <algorithm>

namespace plotix {

std::vector<int> pagesToPrint(const QPagedPaintDevice& device, int count)
{
    int first = 1, last = count;
    const auto* printer = dynamic_cast<const QPrinter*>(&device);
    if (printer && printer->printRange() == QPrinter::PageRange && printer->fromPage() > 0) {
        first = printer->fromPage();
        last = std::min(count, std::max(first, printer->toPage()));
    }
    if (first > count)
        throw ReportableError(QCoreApplication::translate("ReportPrinter", "The report has no page %1; it has %2.")
                                  .arg(first)
                                  .arg(count));
    std::vector<int> pages;
    for (int page = first; page <= last; ++page)
        pages.push_back(page - 1);
    return pages;
}

}  // namespace plotix
