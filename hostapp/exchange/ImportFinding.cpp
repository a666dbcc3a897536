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
