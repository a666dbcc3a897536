#pragma once

#include "base/ReportableError.h"
#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/SiteAnnotations.h"

#include <variant>
#include <vector>

/// Somebody else changed the same thing since it was looked at: who was first wins, nothing was stored, and whoever
/// comes second is told what is there now. A value; any thread.
namespace plotix {

class ChangedMeanwhile : public ReportableError {
public:
    /// What is there now; nothing: it was deleted.
    using Theirs = std::variant<std::monostate, SiteNote, std::vector<SiteLimit>, SiteProperty::Description>;

    explicit ChangedMeanwhile(Theirs theirs)
        : ReportableError(QStringLiteral("Somebody else changed this meanwhile: look at it again before you do.")),
          m_theirs(std::move(theirs))
    {
    }
    const Theirs& theirs() const { return m_theirs; }

private:
    Theirs m_theirs;
};

}  // namespace plotix
