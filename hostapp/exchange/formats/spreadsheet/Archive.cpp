#include "hostapp/exchange/formats/spreadsheet/Archive.h"

#include "hostapp/exchange/ImportFinding.h"

#include <zip.h>

namespace plotix {

namespace {

[[noreturn]] void refuse(const char* reason)
{
    throw ImportFailure({.what = ImportFinding::What::BrokenArchive, .text = QString::fromUtf8(reason)});
}

class Part : public QIODevice {
public:
    explicit Part(zip_file_t* file) : m_file(file) { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }
    ~Part() override { zip_fclose(m_file); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 room) override
    {
        const zip_int64_t count = zip_fread(m_file, data, static_cast<zip_uint64_t>(room));
        if (count < 0)
            refuse(zip_file_strerror(m_file));
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    zip_file_t* m_file;
};

}  // namespace

struct Archive::Impl {
    QByteArray bytes;
    zip_t* zip = nullptr;
};

Archive::Archive(QByteArray bytes) : m_impl(std::make_unique<Impl>())
{
    m_impl->bytes = std::move(bytes);
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source =
        zip_source_buffer_create(m_impl->bytes.constData(), static_cast<zip_uint64_t>(m_impl->bytes.size()), 0, &error);
    m_impl->zip = source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error);
    const QByteArray reason = zip_error_strerror(&error);
    zip_error_fini(&error);
    if (m_impl->zip != nullptr)
        return;
    if (source != nullptr)
        zip_source_free(source);
    refuse(reason.constData());
}

Archive::~Archive()
{
    if (m_impl->zip != nullptr)
        zip_discard(m_impl->zip);
}

bool Archive::has(const QString& name) const
{
    return zip_name_locate(m_impl->zip, name.toUtf8().constData(), ZIP_FL_NOCASE) >= 0;
}

qint64 Archive::size(const QString& name) const
{
    zip_stat_t status;
    const bool isThere = zip_stat(m_impl->zip, name.toUtf8().constData(), ZIP_FL_NOCASE, &status) == 0;
    return isThere && (status.valid & ZIP_STAT_SIZE) != 0 ? static_cast<qint64>(status.size) : 0;
}

std::unique_ptr<QIODevice> Archive::open(const QString& name) const
{
    if (!has(name))
        return nullptr;
    zip_file_t* const file = zip_fopen(m_impl->zip, name.toUtf8().constData(), ZIP_FL_NOCASE);
    if (file == nullptr)
        refuse(zip_strerror(m_impl->zip));
    return std::make_unique<Part>(file);
}

}  // namespace plotix
