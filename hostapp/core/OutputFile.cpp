#include "hostapp/core/OutputFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <array>

namespace plotix {

namespace {

constexpr qint64 kBytesThatTell = 4096;

struct KnownKind {
    FileKind kind;
    const char* said;     ///< for people, with its article
    const char* endings;  ///< of what is written, separated by blanks; empty: never written
};

constexpr std::array<KnownKind, 8> kKinds = {{
    {FileKind::Png, "a PNG picture", "png"},
    {FileKind::Pdf, "a PDF document", "pdf"},
    {FileKind::Svg, "an SVG drawing", "svg"},
    {FileKind::Text, "a text", "csv txt"},
    {FileKind::Workbook, "a spreadsheet or another archive", "xlsx"},
    {FileKind::Database, "a site or another database", ""},
    {FileKind::Empty, "empty", ""},
    {FileKind::Other, "a file of another kind", ""},
}};

const KnownKind& known(FileKind kind)
{
    for (const KnownKind& row : kKinds)
        if (row.kind == kind)
            return row;
    return kKinds.back();
}

/// UTF-16 has zero bytes; every other text has none.
bool isText(const QByteArray& beginning)
{
    return beginning.startsWith("\xff\xfe") || beginning.startsWith("\xfe\xff") || !beginning.contains('\0');
}

/// Markup whose first element says so.
bool isDrawing(const QByteArray& beginning)
{
    const QByteArray text = beginning.trimmed();
    return text.startsWith("<svg") || (text.startsWith("<?xml") && text.contains("<svg"));
}

QString saidEndings(FileKind kind)
{
    return QLatin1Char('.') + endingsOf(kind).join(QStringLiteral(" or ."));
}

QString said(const OutputProblem& problem)
{
    switch (problem.reason) {
    case OutputProblem::Reason::WrongEnding:
        return QStringLiteral("%1 must end in %2").arg(problem.path, saidEndings(problem.wanted));
    case OutputProblem::Reason::OtherKind:
        return QStringLiteral("%1 exists and is %2, so it is not written over: choose another name")
            .arg(problem.path, QLatin1String(known(problem.found).said));
    case OutputProblem::Reason::NotAFile:
        return QStringLiteral("%1 is not a file that can be replaced: choose another name").arg(problem.path);
    case OutputProblem::Reason::NotWritten: break;
    }
    return QStringLiteral("%1 cannot be written: %2").arg(problem.path, problem.systemError);
}

}  // namespace

FileKind kindOfFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return FileKind::Other;
    const QByteArray beginning = file.read(kBytesThatTell);
    if (beginning.isEmpty())
        return file.size() == 0 ? FileKind::Empty : FileKind::Other;
    if (beginning.startsWith("\x89PNG\r\n\x1a\n"))
        return FileKind::Png;
    if (beginning.startsWith("%PDF-"))
        return FileKind::Pdf;
    if (beginning.startsWith("SQLite format 3"))
        return FileKind::Database;
    if (beginning.startsWith("PK\x03\x04") || beginning.startsWith("PK\x05\x06"))
        return FileKind::Workbook;
    if (!isText(beginning))
        return FileKind::Other;
    return isDrawing(beginning) ? FileKind::Svg : FileKind::Text;
}

QStringList endingsOf(FileKind kind)
{
    return QString::fromLatin1(known(kind).endings).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

std::optional<FileKind> kindWrittenAs(const QString& ending)
{
    for (const KnownKind& row : kKinds)
        if (endingsOf(row.kind).contains(ending, Qt::CaseInsensitive))
            return row.kind;
    return std::nullopt;
}

QString fileNameFor(const QString& title, const QString& ending)
{
    constexpr qsizetype kLongest = 80;
    QString name;
    for (const QChar character : title.simplified().left(kLongest))
        name += character.isPrint() && !QStringView(u"/\\:*?\"<>|").contains(character) ? character : QChar(u'-');
    while (name.startsWith(u'.') || name.startsWith(u' '))  // these are hidden
        name.remove(0, 1);
    while (name.endsWith(u'.') || name.endsWith(u' '))
        name.chop(1);
    return (name.isEmpty() ? QStringLiteral("Plotix") : name) + (ending.isEmpty() ? QString() : u'.' + ending);
}

bool hasEndingOf(FileKind kind, const QString& path)
{
    const QStringList endings = endingsOf(kind);
    return std::any_of(endings.begin(), endings.end(), [&path](const QString& ending) {
        return path.endsWith(QLatin1Char('.') + ending, Qt::CaseInsensitive);
    });
}

std::optional<OutputProblem> problemOfWriting(FileKind kind, const QString& path)
{
    const QFileInfo there(path);
    if (!hasEndingOf(kind, path))
        return OutputProblem{OutputProblem::Reason::WrongEnding, path, kind};
    if (!there.exists())
        return std::nullopt;
    if (!there.isFile())
        return OutputProblem{OutputProblem::Reason::NotAFile, path, kind};
    const FileKind found = kindOfFile(path);
    if (found == kind || found == FileKind::Empty)
        return std::nullopt;
    return OutputProblem{OutputProblem::Reason::OtherKind, path, kind, found};
}

OutputFailure::OutputFailure(OutputProblem problem) : ReportableError(said(problem)), m_problem(std::move(problem)) {}

/// A full disk takes part of a write and gives its reason only when asked to take the rest, which the toolkit does not
/// do.
class OutputFile::Saved : public QSaveFile {
public:
    using QSaveFile::QSaveFile;

    const QString& failure() const { return m_failure; }

protected:
    qint64 writeData(const char* data, qint64 size) override
    {
        qint64 done = 0;
        while (done < size && m_failure.isNull()) {
            const qint64 written = QSaveFile::writeData(data + done, size - done);
            if (written <= 0)
                m_failure = errorString();
            done += written;
        }
        return m_failure.isNull() ? size : -1;
    }

private:
    QString m_failure;
};

OutputFile::OutputFile(FileKind kind, const QString& path)
    : m_kind(kind), m_path(path), m_file(std::make_unique<Saved>(path))
{
    requireWritable(kind, path);
    if (!m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw OutputFailure({OutputProblem::Reason::NotWritten, path, kind, {}, m_file->errorString()});
}

OutputFile::~OutputFile() = default;

QIODevice& OutputFile::device()
{
    return *m_file;
}

void OutputFile::commit()
{
    requireWritable(m_kind, m_path);
    if (!m_file->failure().isNull())
        throw OutputFailure({OutputProblem::Reason::NotWritten, m_path, m_kind, {}, m_file->failure()});
    if (!m_file->commit())
        throw OutputFailure({OutputProblem::Reason::NotWritten, m_path, m_kind, {}, m_file->errorString()});
}

void requireWritable(FileKind kind, const QString& path)
{
    if (const auto problem = problemOfWriting(kind, path))
        throw OutputFailure(*problem);
}

void writeOutput(FileKind kind, const QString& path, const QByteArray& bytes)
{
    OutputFile file(kind, path);
    file.device().write(bytes);
    file.commit();
}

}  // namespace plotix
