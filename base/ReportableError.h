#pragma once

#include <QtCore/QString>

#include <stdexcept>

/// What went wrong and what to do about it, in one line for people. Thrown inside the host; the command line and the
/// site window show it.
namespace plotix {

class ReportableError : public std::runtime_error {
public:
    explicit ReportableError(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
    const QString& message() const { return m_message; }

private:
    QString m_message;
};

/// The server of a site cannot be reached, or not enough of it: the same may be tried again later.
class ServerUnreachable : public ReportableError {
public:
    using ReportableError::ReportableError;
};

/// Another file has taken the name of the one that was open. Whoever sees this writes no more: neither to the new file,
/// which is somebody else's, nor to the old one, which nobody would find.
class FileReplaced : public ReportableError {
public:
    using ReportableError::ReportableError;
};

}  // namespace plotix
