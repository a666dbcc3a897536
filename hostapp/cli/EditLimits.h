#pragma once

#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/document/SiteDocument.h"

#include <iosfwd>
#include <optional>

namespace CLI {
class App;
}

/// Limits on the command line: set and removed by `plotix edit`, told by `plotix info`. Main thread only.
namespace plotix {

struct LimitWish {
    QString text;  ///< PROPERTY > VALUE [UNIT]
    QString name, removed;
    std::optional<KTVLimit::Severity> severity;

    bool isWished() const { return !text.isEmpty() || !removed.isEmpty(); }
};

/// The options --limit, --limit-name, --severity and --remove-limit; the wish must live until the words are parsed.
void addLimitOptions(CLI::App* command, LimitWish& wish);

/// What is wrong with these options together; nothing: they fit.
std::optional<QString> contradictionIn(const LimitWish& wish, const QString& property);

/// Sets the limit, or changes the one of that name; or removes one from the property named. Throws ReportableError.
EditOutcome editLimits(const LimitWish& wish, const QString& site, const SiteAgent& agent, const QString& property);

/// "above 60 °C", in the unit in which it was set.
QString limitText(const SiteLimit& limit);
const char* severityWord(KTVLimit::Severity severity);

}  // namespace plotix
