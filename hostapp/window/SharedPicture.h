#pragma once

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QImage>

#include <functional>
#include <memory>

/// Gives a picture to the desktop's mail program or picture viewer, as a temporary file that lasts as long as this
/// object.
///
/// Main thread only; a started program runs on its own.
namespace plotix {

/// The desktop, as far as passing on a picture needs it. Replaced in tests.
struct DesktopPrograms {
    std::function<QString(const QString& name)> find;  ///< the program's path; empty when it is not installed
    std::function<bool(const QString& program, const QStringList& arguments)> start;
    std::function<bool(const QUrl& url)> open;  ///< with the desktop's program for it

    static DesktopPrograms real();
};

class SharedPicture {
public:
    explicit SharedPicture(DesktopPrograms programs = DesktopPrograms::real());

    // Empty when it can be done, else the reason for people.
    QString mailUnavailable() const;
    QString openUnavailable() const;

    // Each throws ReportableError.
    void mail(const QImage& image);      ///< attached; where mail cannot attach, the text says where the picture is
    void openWith(const QImage& image);  ///< in the desktop's viewer

private:
    bool canOpen() const;
    QString write(const QImage& image);

    DesktopPrograms m_programs;
    std::unique_ptr<QTemporaryDir> m_folder;  // made at the first picture
    int m_count = 0;
};

}  // namespace plotix
