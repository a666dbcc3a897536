#include "hostapp/exchange/ImportFinding.h"

#include "hostapp/exchange/DecodedText.h"

#include <string>

namespace plotix {

namespace {

constexpr qsizetype kLongestText = 40;   // characters shown
constexpr std::size_t kMostBytes = 200;  // of a text that are looked at

/// For logs: people read what an outlet makes of the finding.
std::string technicalText(const ImportFinding& finding)
{
    return "import finding " + std::to_string(static_cast<int>(finding.what)) + " in line " +
           std::to_string(finding.line);
}

}  // namespace

ImportOption optionOf(const ImportFinding& finding)
{
    using What = ImportFinding::What;
    switch (finding.what) {
    case What::UnknownColumn: return finding.option;
    case What::UnknownUnit:
    case What::UnitsDisagree:
    case What::IncompatibleUnits: return ImportOption::Unit;
    case What::NoTimeColumn:
    case What::NoTimesInColumn:
    case What::NumbersAreNoTimes: return ImportOption::TimeColumn;
    case What::ManyDevices:
    case What::NoRowWanted: return ImportOption::Where;
    case What::DateOrderUnknown:
    case What::DateOrderContradicts: return ImportOption::DateOrder;
    case What::DecimalMarkUnknown: return ImportOption::Decimal;
    case What::ManyRowsAtOneTime: return finding.columns.isEmpty() ? ImportOption::RowsAtOneTime : ImportOption::Where;
    case What::TooManyBadRows:
    case What::NoRowRead: return ImportOption::BadRows;
    case What::NoNameColumn: return ImportOption::Arrangement;
    case What::TimesNotInZone:
    case What::UnknownTimeZone:
    case What::UnusableTimeZone: return ImportOption::TimeZone;
    case What::UnusableDelimiter: return ImportOption::Delimiter;
    case What::NoSuchSheet: return ImportOption::Sheet;
    case What::QualityHasNoWords: return ImportOption::BadWords;
    default: return ImportOption::None;
    }
}

QString textForFinding(std::string_view bytes)
{
    const QString text = decodedText(bytes.substr(0, kMostBytes)).simplified();
    return text.size() > kLongestText ? text.left(kLongestText - 1) + QStringLiteral("…") : text;
}

ImportFailure::ImportFailure(ImportFinding finding)
    : std::runtime_error(technicalText(finding)), m_finding(std::move(finding))
{
}

}  // namespace plotix
