#include "hostapp/live/sources/ReadingSources.h"

#include "base/ReportableError.h"
#include "hostapp/live/sources/computer/ComputerSource.h"

#include <QtCore/QStringList>

#include <array>

namespace plotix {

namespace {

constexpr std::array<ReadingSourceKind, 1> kKinds = {{
    {"computer", {}, [](const SourceSettings&) { return makeComputerSource(); }},
}};

}  // namespace

std::span<const ReadingSourceKind> readingSourceKinds()
{
    return kKinds;
}

std::unique_ptr<ReadingSource> makeReadingSource(const ReadingSourceKind& kind, const SourceSettings& settings)
{
    for (const char* need : kind.needs)
        if (settings.value(QLatin1String(need)).isEmpty())
            throw ReportableError(
                QStringLiteral("the source “%1” needs a %2").arg(QLatin1String(kind.name), QLatin1String(need)));
    return kind.make(settings);
}

std::unique_ptr<ReadingSource> makeReadingSource(const QString& name, const SourceSettings& settings)
{
    QStringList names;
    for (const ReadingSourceKind& kind : kKinds) {
        if (name == QLatin1String(kind.name))
            return makeReadingSource(kind, settings);
        names << QLatin1String(kind.name);
    }
    throw ReportableError(
        QStringLiteral("there is no source “%1” (there are: %2)").arg(name, names.join(QStringLiteral(", "))));
}

}  // namespace plotix
