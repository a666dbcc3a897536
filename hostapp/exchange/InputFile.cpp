#include "hostapp/exchange/InputFile.h"

#include "hostapp/exchange/ImportFinding.h"

namespace plotix {

InputFile::InputFile(const QString& path) : m_path(path), m_file(path)
{
    if (!m_file.open(QIODevice::ReadOnly))
        throw ImportFailure({.what = ImportFinding::What::CannotBeOpened, .text = m_file.errorString()});
    if (m_file.isSequential()) {
        m_memory.setData(m_file.readAll());
        m_memory.open(QIODevice::ReadOnly);
        m_size = m_memory.size();
    } else {
        m_size = m_file.size();
    }
}

QIODevice& InputFile::fromBeginning()
{
    QIODevice& device = m_memory.isOpen() ? static_cast<QIODevice&>(m_memory) : m_file;
    device.seek(0);
    return device;
}

}  // namespace plotix
