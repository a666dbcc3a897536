#pragma once

#include <QtCore/QString>

#include <condition_variable>
#include <mutex>
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
    /// Of the file that a connection of this process has open as long as this lives.
    explicit EarlyWriting(const QString& file);
    ~EarlyWriting();
    EarlyWriting(const EarlyWriting&) = delete;
    EarlyWriting& operator=(const EarlyWriting&) = delete;

private:
    void work();

    std::vector<int> m_files;  // borrowed from the connection
    std::mutex m_mutex;
    std::condition_variable m_ended;
    bool m_isEnding = false;  // guarded
    std::thread m_thread;
};

}  // namespace plotix
