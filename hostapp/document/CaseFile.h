#pragma once

#include "base/ReportableError.h"
#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/ArchivedPlugIn.h"
#include "hostapp/document/RecordCopying.h"
#include "hostapp/document/SiteAnnotations.h"

#include <memory>

/// A case: a site file of its own with one trend, the records it shows and what was said about them, to send to
/// somebody who has nothing else. Nothing in it leads back to the site: no imports, no steps to undo, no recording.
///
/// Values and a free function; any one thread.
namespace plotix {

/// What goes into a case. Rows and ids are those of the site.
struct CasePlan {
    struct Agent {
        qint64 id = 0;
        QString identifier, name;
        std::vector<SiteProperty::Description> properties;  ///< computed ones too
        std::vector<CopiedSpan> spans;                      ///< of its records
    };
    QString site;                          ///< its file, which a case never replaces
    std::shared_ptr<RecordStore> records;  ///< *shared*
    QString siteName, siteLocation;
    QByteArray siteZone;  ///< as the site's setting has it; empty: none was chosen
    std::vector<Agent> agents;
    std::vector<SiteLimit> limits;
    std::vector<SiteNote> notes;
    ArchivedPlugIn trend;
    QString trendTitle;
    CopiedSpan span;  ///< that the trend shows
};

/// Why a case was not written; each outlet words it.
struct CaseProblem {
    enum class Reason {
        WrongEnding,      ///< the name does not end in .plotix
        IsTheSite,        ///< the name is the site's own
        IsNoCase,         ///< there is something else than a case
        IsInUse,          ///< there is a case that is open, or was not closed
        NothingRecorded,  ///< by any property between the two times
        NotWritten        ///< for `reason`, such as a full disk
    };
    Reason reason = Reason::NotWritten;
    QString path;
    CopiedSpan span = {};
    QString detail = {};
};

/// What was there before is as it was. The message is English; a window words the problem in the user's language.
class CaseFailure : public ReportableError {
public:
    explicit CaseFailure(CaseProblem problem);
    const CaseProblem& problem() const { return m_problem; }

private:
    CaseProblem m_problem;
};

struct CaseContents {
    std::size_t records = 0, properties = 0, notes = 0;
    qint64 bytes = 0;  ///< of the file
};

/// What forbids writing a case there; nothing: it may be tried. Touches nothing.
std::optional<CaseProblem> problemOfCase(const CasePlan& plan, const QString& path);

/// Writes the file whole, in place of a case that is there already, or not at all. It is made beside its place, so that
/// the disk needs room for both. `progress` goes up to 1; nothing when it stopped the work. Throws CaseFailure, and
/// ReportableError where the site's records cannot be read.
std::optional<CaseContents> writeCase(const CasePlan& plan, const QString& path, const ArchiveProgress& progress = {});

}  // namespace plotix
