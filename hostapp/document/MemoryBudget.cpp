#include "hostapp/document/MemoryBudget.h"

#include "hostapp/core/Localization.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>

#include <unistd.h>

#include <cmath>

namespace plotix {

namespace {

/// Where a size is said.
struct Said {
    const char* variable;
    const char* key;  // stored: never change
};
constexpr Said kBudget{"PLOTIX_MEMORY_BUDGET", "Memory/budget"};
constexpr Said kPages{"PLOTIX_PAGE_BUDGET", "Memory/pages"};
constexpr Said kServerCache{"PLOTIX_SERVER_CACHE", "Servers/cache"};

class MemoryText {
    Q_DECLARE_TR_FUNCTIONS(MemoryText)
};

std::uint64_t machineMemory()
{
    const long pages = sysconf(_SC_PHYS_PAGES), size = sysconf(_SC_PAGESIZE);
    return pages > 0 && size > 0 ? static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(size)
                                 : std::uint64_t{4} << 30;
}

std::optional<std::uint64_t> sizeSaid(const Said& where)
{
    if (const auto size = sizeFromText(qEnvironmentVariable(where.variable)))
        return size;
    return sizeFromText(QSettings().value(QLatin1String(where.key)).toString());
}

using Rounding = double (*)(double);

double down(double number)
{
    return std::floor(number);
}

double nearest(double number)
{
    return std::round(number);
}

/// One digit after the point below ten.
QString numberText(double number, Rounding rounding)
{
    const double tenths = rounding(number * 10);
    return tenths < 100 ? QLocale(installedLanguage()).toString(tenths / 10, 'f', 1)
                        : QLocale(installedLanguage()).toString(rounding(number), 'f', 0);
}

/// In the largest unit that gives at least two.
QString lengthText(double seconds, Rounding rounding)
{
    constexpr double kMinute = 60, kHour = 60 * kMinute, kDay = 24 * kHour, kYear = 365 * kDay;
    if (seconds >= 2 * kYear)
        return MemoryText::tr("%1 years").arg(numberText(seconds / kYear, rounding));
    if (seconds >= 2 * kDay)
        return MemoryText::tr("%1 days").arg(numberText(seconds / kDay, rounding));
    if (seconds >= 2 * kHour)
        return MemoryText::tr("%1 hours").arg(numberText(seconds / kHour, rounding));
    if (seconds >= 2 * kMinute)
        return MemoryText::tr("%1 minutes").arg(numberText(seconds / kMinute, rounding));
    return MemoryText::tr("%1 seconds").arg(numberText(seconds, rounding));
}

QString sizeText(double bytes)
{
    const auto text = [](double number) { return QLocale(installedLanguage()).toString(number, 'f', 1); };
    if (bytes >= 1e9)
        return MemoryText::tr("%1 GB").arg(text(bytes / 1e9));
    return bytes >= 1e6 ? MemoryText::tr("%1 MB").arg(text(bytes / 1e6))
                        : MemoryText::tr("%1 kB").arg(text(bytes / 1e3));
}

QString propertiesText(std::size_t properties)
{
    return properties == 1 ? MemoryText::tr("1 property")
                           : MemoryText::tr("%1 properties").arg(static_cast<qulonglong>(properties));
}

std::optional<QString> problemOf(const Said& where, std::uint64_t used)
{
    const auto problem = [used](const char* name, const QString& text) {
        return QStringLiteral("%1 is “%2”, which is no size such as 8 GB, so it is passed over; %3 may be used")
            .arg(QLatin1String(name), text, sizeText(static_cast<double>(used)));
    };
    const QString variable = qEnvironmentVariable(where.variable);
    if (!variable.isEmpty())
        return sizeFromText(variable) ? std::nullopt : std::optional(problem(where.variable, variable));
    const QString setting = QSettings().value(QLatin1String(where.key)).toString();
    return setting.isEmpty() || sizeFromText(setting) ? std::nullopt : std::optional(problem(where.key, setting));
}

}  // namespace

std::optional<std::uint64_t> sizeFromText(const QString& text)
{
    static const QRegularExpression form(QStringLiteral(R"(^\s*(\d+(?:\.\d+)?)\s*([KMGT]?)B?\s*$)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(text);
    const QString unit = match.captured(2).toUpper();
    const int thousands = unit.isEmpty() ? 0 : 1 + static_cast<int>(QStringLiteral("KMGT").indexOf(unit));
    const double bytes = match.captured(1).toDouble() * std::pow(1000.0, thousands);
    if (!match.hasMatch() || !(bytes >= 1) || bytes >= 1e18)
        return std::nullopt;
    return static_cast<std::uint64_t>(bytes);
}

std::uint64_t memoryBudget()
{
    return sizeSaid(kBudget).value_or(machineMemory() / 2);
}

std::uint64_t pageBudget()
{
    return sizeSaid(kPages).value_or(PageCache::kDefaultBudget);
}

std::uint64_t serverCacheBudget()
{
    for (const QString& said :
         {qEnvironmentVariable(kServerCache.variable), QSettings().value(QLatin1String(kServerCache.key)).toString()})
        if (said.trimmed() == QLatin1String("0"))
            return 0;
        else if (const auto size = sizeFromText(said))
            return *size;
    return 1'000'000'000;
}

const std::shared_ptr<PageCache>& programPages()
{
    static const auto pages = std::make_shared<PageCache>(static_cast<std::size_t>(pageBudget()));
    return pages;
}

std::optional<QString> memoryBudgetProblem()
{
    for (const auto& [where, used] : {std::pair(kBudget, memoryBudget()), std::pair(kPages, pageBudget()),
                                      std::pair(kServerCache, serverCacheBudget())})
        if (const auto problem = problemOf(where, used); problem && used > 0)
            return problem;
    return std::nullopt;
}

QString sentenceOf(const MemoryShortage& shortage)
{
    return MemoryText::tr(
               "%1 of %2 need %3 of memory, but %4 may be used: choose a range of at most %5, or allow more with "
               "PLOTIX_MEMORY_BUDGET.")
        .arg(lengthText(shortage.length, nearest), propertiesText(shortage.properties),
             sizeText(static_cast<double>(shortage.needed)), sizeText(static_cast<double>(shortage.budget)),
             lengthText(shortage.fittingLength, down));
}

std::optional<QString> refusalOf(const ReadRequest& request, std::uint64_t budget)
{
    const std::optional<MemoryShortage> shortage = shortageOf(request, budget);
    return shortage ? std::optional(sentenceOf(*shortage)) : std::nullopt;
}

}  // namespace plotix
