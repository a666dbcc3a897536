#pragma once

#include "base/ReportableError.h"

#include <QtCore/QIODevice>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

/// Files that the program writes for people to carry away: pictures, pages, tables.
///
/// Each is written whole or not at all, and never over a file of another kind, so that a name chosen by mistake costs
/// nobody a site. What an existing file is, its first bytes decide and not its name. Values, free functions and one
/// class that *owns* its file; any one thread.
namespace plotix {

enum class FileKind {
    Png,
    Pdf,
    Svg,
    Text,      ///< measurements, a row a line
    Workbook,  ///< measurements as a spreadsheet program stores them
    Database,  ///< a site is one; never written here
    Empty,     ///< no bytes yet: any kind may take its place
    Other
};

/// By the file's first bytes, whatever its name. A file that cannot be read is `Other`. Requires: it exists.
FileKind kindOfFile(const QString& path);

/// What the names of such a file end in, without the dot, the usual one first; none for a kind that is never written.
QStringList endingsOf(FileKind kind);

/// The kind that is written under this ending; nothing: none is.
std::optional<FileKind> kindWrittenAs(const QString& ending);

/// A name for a file about something of this title: without what names of files cannot have on every system, and of a
/// length that they all take. Never empty.
QString fileNameFor(const QString& title, const QString& ending);

/// Whether the name ends in one of the kind's endings, in capitals or not.
bool hasEndingOf(FileKind kind, const QString& path);

/// Why a file was not written; each outlet words it.
struct OutputProblem {
    enum class Reason {
        WrongEnding,  ///< the name ends in none of the kind's endings
        OtherKind,    ///< there is a file of another kind, `found`
        NotAFile,     ///< the name is a folder's or a device's
        NotWritten    ///< the system refused, for `systemError`
    };
    Reason reason = Reason::NotWritten;
    QString path;
    FileKind wanted = FileKind::Other;
    FileKind found = FileKind::Empty;
    QString systemError{};
};

/// What forbids writing a file of this kind there; nothing: it may be tried. Touches nothing.
std::optional<OutputProblem> problemOfWriting(FileKind kind, const QString& path);

/// What was there before is as it was. The message is English; a window words the problem in the user's language.
class OutputFailure : public ReportableError {
public:
    explicit OutputFailure(OutputProblem problem);
    const OutputProblem& problem() const { return m_problem; }

private:
    OutputProblem m_problem;
};

/// A file on its way out. Without commit() there is none, and one that was there before stays.
class OutputFile {
public:
    /// Throws OutputFailure.
    OutputFile(FileKind kind, const QString& path);
    ~OutputFile();

    /// For writing in large parts: nothing is buffered.
    QIODevice& device();

    /// Puts the file in its place, after another look at what is there. Throws OutputFailure, also when an earlier
    /// write failed.
    void commit();

private:
    class Saved;
    FileKind m_kind;
    QString m_path;
    std::unique_ptr<Saved> m_file;
};

/// Before long work whose result goes there. Throws OutputFailure.
void requireWritable(FileKind kind, const QString& path);

/// The whole file at once. Throws OutputFailure.
void writeOutput(FileKind kind, const QString& path, const QByteArray& bytes);

}  // namespace plotix
