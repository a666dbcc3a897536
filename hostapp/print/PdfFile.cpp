#include "hostapp/print/PdfFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtGui/QPdfWriter>

namespace plotix {

QByteArray pdfFile(const QString& title, const std::function<void(QPdfWriter&)>& draw)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setResolution(kPdfResolution);
        writer.setCreator(QCoreApplication::applicationName());
        writer.setTitle(title);
        draw(writer);
    }
    return bytes;
}

}  // namespace plotix
