#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <memory>

/// Tells whoever writes a site, in this process or another one, which state of it somebody still wants to read: not by
/// a transaction, which would keep the log from being merged, but by a lock in a small file beside it.
///
/// A state is named by the highest chunk number that had been given in it. Locks end with the process that has them,
/// however it ends.
namespace plotix {

/// *Owned* by whoever reads; any one thread. The file goes with the last mark.
class ReaderMark {
public:
    /// From now on every state counts as wanted, until `settle` says which. To be called before the state is looked
    /// at. Null where marks cannot be made, as in a folder that one may not write: then nothing is kept for the reader.
    static std::unique_ptr<ReaderMark> on(const QString& site);
    ~ReaderMark();
    ReaderMark(const ReaderMark&) = delete;
    ReaderMark& operator=(const ReaderMark&) = delete;

    void settle(qint64 lastChunk);

private:
    ReaderMark(QByteArray path, int descriptor) : m_path(std::move(path)), m_descriptor(descriptor) {}
    bool isInPlace() const;

    const QByteArray m_path;
    const int m_descriptor;
};

/// The marks that others have on a site now. *Owned* by whoever writes; one thread.
class ReaderMarks {
public:
    explicit ReaderMarks(const QString& site);
    ~ReaderMarks();
    ReaderMarks(const ReaderMarks&) = delete;
    ReaderMarks& operator=(const ReaderMarks&) = delete;

    /// Whether somebody wants a state whose highest chunk number is one of these. Requires: first ≤ last.
    bool areAnyIn(qint64 first, qint64 last) const;

private:
    const int m_descriptor;  // −1: nobody reads
};

}  // namespace plotix
