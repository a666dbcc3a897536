#pragma once

#include "hostapp/core/OutputFile.h"
#include "hostapp/site/WorkingSite.h"

#include <future>

/// A picture of a trend over other times than it shows, for a thread that may wait: the records are read while the main
/// queue goes on, since no task of the queue may wait for them.
///
/// A copy of the trend shows those times; the trend itself stays as it is. *Borrows* the site. Used on one thread, not
/// the main one; the copy lives on the main queue alone.
namespace plotix {

class RangedPicture {
public:
    RangedPicture(const WorkingSite& site, const KTVPlugInPtr& trend, const MomentSpan& span);
    ~RangedPicture();
    RangedPicture(const RangedPicture&) = delete;
    RangedPicture& operator=(const RangedPicture&) = delete;

    /// PNG, a pixel a point, or PDF; empty where it cannot be drawn. Waits until the records are shown. Call once.
    QByteArray made(FileKind format);

private:
    class Shown;
    KTVPlugInPtr m_copy;
    std::future<void> m_shown;
};

}  // namespace plotix
