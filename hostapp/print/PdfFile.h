#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>

class QPdfWriter;

/// The PDF files of reports, whatever their form. Free functions; main thread, since reports draw views.
namespace plotix {

inline constexpr int kPdfResolution = 1200;  // dots per inch of the files we write

/// A whole file with this title and the program's name in it. `draw` puts everything on its pages; the first one is
/// there. What it throws goes on to the caller.
QByteArray pdfFile(const QString& title, const std::function<void(QPdfWriter&)>& draw);

}  // namespace plotix
