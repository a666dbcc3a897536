#pragma once

#include <vector>

class QPagedPaintDevice;

/// Which pages of a document a device is to be given. Free function; main thread only.
namespace plotix {

/// Counted from 0, ascending: all of `count`, or the range chosen in the printer's dialog. Throws ReportableError when
/// the range begins behind the last page.
std::vector<int> pagesToPrint(const QPagedPaintDevice& device, int count);

}  // namespace plotix
