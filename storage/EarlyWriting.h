#pragma once

#include <QtCore/QString>

#include <sys/types.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

/// Has the system write to disk what stands in its memory of a document and its log, again and again while this lives:
/// a commit of a hundred megabytes then finds most of it written where it would have waited for all of it, twice. It
/// changes nothing about what is safe when: commits wait for the disk as before, and are told what went wrong there.
///
/// A large commit *owns* one. Where the system cannot be asked for this, it does nothing.
namespace plotix {

class EarlyWriting {
public:
    /// Of a file and its log that connections of this process have open. Throws std::bad_alloc.
    EarlyWriting(const QString& file, const QString& log);
    ~EarlyWriting();
    EarlyWriting(const EarlyWriting&) = delete;
    EarlyWriting& operator=(const EarlyWriting&) = delete;

private:
    /// One that this process has open; somebody else may close it at any time, and open another file by its number.
    struct OpenFile {
        int descriptor;
        dev_t device;
        ino_t number;
    };
    static std::optional<OpenFile> openFile(const QString& file);
    void work();

    std::vector<OpenFile> m_files;
    std::mutex m_mutex;
    std::condition_variable m_ended;
    bool m_isEnding = false;  // guarded
    std::thread m_thread;
};

}  // namespace plotix
