#include "hostapp/exchange/QualityWords.h"

#include "hostapp/exchange/FoldedWord.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace plotix {

namespace {

// Folded.
constexpr std::array<std::string_view, 23> kGood = {
    "accepted",   "approved", "einwandfrei", "fehlerfrei", "g?ltig",    "good",  "gueltig",  "gut",
    "i. o.",      "i.o.",     "in ordnung",  "io",         "no error",  "o.k.",  "ok",       "okay",
    "overridden", "pass",     "passed",      "plausibel",  "plausible", "valid", "verified",
};
constexpr std::array<std::string_view, 27> kUncertain = {
    "doubtful",     "ersatzwert", "estimated",   "fraglich",     "gesch?tzt",   "geschaetzt",  "interpolated",
    "interpoliert", "last known", "provisional", "questionable", "sub normal",  "subnormal",   "stale",
    "substituted",  "suspect",    "suspicious",  "uncertain",    "unconfirmed", "unsicher",    "unsure",
    "veraltet",     "vorl?ufig",  "vorlaeufig",  "warning",      "warnung",     "zweifelhaft",
};
constexpr std::array<std::string_view, 64> kBad = {
    "ausfall",
    "ausgefallen",
    "bad",
    "bad input",
    "bad value",
    "calc fail",
    "comm fail",
    "comm failure",
    "comm. fail",
    "communication error",
    "communication failure",
    "configuration error",
    "defect",
    "defekt",
    "device failure",
    "disconnected",
    "drahtbruch",
    "err",
    "erroneous",
    "error",
    "fail",
    "failed",
    "failure",
    "fault",
    "faulted",
    "faulty",
    "fehler",
    "fehlerhaft",
    "fehlt",
    "gest?rt",
    "gestoert",
    "i/o timeout",
    "invalid",
    "invalide",
    "kabelbruch",
    "keine daten",
    "kurzschluss",
    "missing",
    "n.i.o.",
    "nicht ok",
    "nicht plausibel",
    "nio",
    "no data",
    "nok",
    "not connected",
    "not ok",
    "not valid",
    "off-line",
    "offline",
    "open circuit",
    "out of range",
    "out of service",
    "rejected",
    "schlecht",
    "sensor failure",
    "short circuit",
    "st?rung",
    "stoerung",
    "timeout",
    "unavailable",
    "ung?ltig",
    "ungueltig",
    "unplausibel",
    "unreliable",
};

template <std::size_t Count>
bool holds(const std::array<std::string_view, Count>& words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// "Bad [Device Failure]", "Good, Local Override", "BadCommunicationError": the first word says it.
bool beginsWith(std::string_view text, std::string_view word)
{
    if (text.size() <= word.size() || FoldedWord(text.substr(0, word.size())).text() != word)
        return false;
    const char next = text[word.size()];
    const bool isSmallLetter = next >= 'a' && next <= 'z';
    return !isSmallLetter && static_cast<unsigned char>(next) < 0x80;
}

Verdict verdictOfWord(std::string_view text)
{
    const FoldedWord folded(text);
    if (holds(kGood, folded.text()) || beginsWith(text, "good"))
        return Verdict::Good;
    if (holds(kUncertain, folded.text()) || beginsWith(text, "uncertain"))
        return Verdict::Uncertain;
    return holds(kBad, folded.text()) || beginsWith(text, "bad") ? Verdict::Bad : Verdict::Unknown;
}

/// Which of two says more against a value.
Verdict worse(Verdict one, Verdict other)
{
    constexpr std::array kFromBest = {Verdict::Good, Verdict::Uncertain, Verdict::Unknown, Verdict::Bad};
    const auto rank = [&](Verdict verdict) { return std::find(kFromBest.begin(), kFromBest.end(), verdict); };
    return rank(one) < rank(other) ? other : one;
}

/// A word, or a list of them in braces. There an alarm is about the plant, not about the value, and "disabled" is no
/// state of a switch, as it may be elsewhere.
Verdict verdictOfWords(std::string_view text)
{
    if (text.size() < 3 || text.front() != '{' || text.back() != '}')
        return verdictOfWord(text);
    Verdict verdict = Verdict::Good;
    for (text = text.substr(1, text.size() - 2); !text.empty();) {
        const std::size_t comma = std::min(text.find(','), text.size());
        std::string_view word = text.substr(0, comma);
        text.remove_prefix(std::min(comma + 1, text.size()));
        word.remove_prefix(std::min(word.find_first_not_of(' '), word.size()));
        const FoldedWord whole(word);
        const std::string_view folded = whole.text();
        const bool isOff = folded == "down" || folded == "disabled" || folded == "null";
        if (folded != "alarm" && folded != "unackedalarm")
            verdict = worse(verdict, isOff ? Verdict::Bad : verdictOfWord(word));
    }
    return verdict;
}

/// The two highest of eight bits say it; the next four have a few meanings each, and the lowest two say which limit was
/// reached.
Verdict verdictOfNumber(std::string_view text)
{
    constexpr std::array kKnown = {0, 4, 8, 12, 16, 20, 24, 28, 32, 64, 68, 80, 84, 88, 192, 216};
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isKnown = error == std::errc() && end == text.data() + text.size() && number >= 0 &&
                         std::find(kKnown.begin(), kKnown.end(), number & ~3) != kKnown.end();
    return !isKnown        ? Verdict::Unknown
           : number >= 192 ? Verdict::Good
           : number >= 64  ? Verdict::Uncertain
                           : Verdict::Bad;
}

Verdict verdictOfTruth(std::string_view text)
{
    if (text == "1" || text == "0")
        return text == "1" ? Verdict::Good : Verdict::Bad;
    constexpr std::array<std::string_view, 5> kTrue = {"ja", "true", "wahr", "y", "yes"};
    constexpr std::array<std::string_view, 5> kFalse = {"falsch", "false", "n", "nein", "no"};
    const FoldedWord folded(text);
    return holds(kTrue, folded.text()) ? Verdict::Good : holds(kFalse, folded.text()) ? Verdict::Bad : Verdict::Unknown;
}

struct Letters {
    char good, uncertain, bad, alsoUncertain;
};

Verdict verdictOfLetter(std::string_view text, const Letters& letters)
{
    const FoldedWord folded(text);
    if (folded.text().size() != 1)
        return Verdict::Unknown;
    const char letter = folded.text().front();
    return letter == letters.good                                           ? Verdict::Good
           : letter == letters.uncertain || letter == letters.alsoUncertain ? Verdict::Uncertain
           : letter == letters.bad                                          ? Verdict::Bad
                                                                            : Verdict::Unknown;
}

bool all(std::span<const std::string> texts, QualityCode code)
{
    return std::all_of(texts.begin(), texts.end(),
                       [code](const std::string& text) { return verdictOf(text, code) != Verdict::Unknown; });
}

bool hasOne(std::span<const std::string> texts, QualityCode code, Verdict verdict)
{
    return std::any_of(texts.begin(), texts.end(),
                       [&](const std::string& text) { return verdictOf(text, code) == verdict; });
}

/// Whether texts that may all be meant so are indeed.
bool isMeant(std::span<const std::string> texts, QualityCode code, QualityHeader header)
{
    const bool hasGood = hasOne(texts, code, Verdict::Good);
    switch (code) {
    case QualityCode::Words: return true;
    case QualityCode::Truth: return header == QualityHeader::Validity;
    // Positioning receivers write V alone for "void" under "Status".
    case QualityCode::ValidLetters:
        return hasGood && (hasOne(texts, code, Verdict::Bad) || header != QualityHeader::Status);
    case QualityCode::Numbers:
    case QualityCode::GoodLetters:
    case QualityCode::ApprovedLetters: break;
    }
    return hasGood;
}

}  // namespace

Verdict verdictOf(std::string_view text, QualityCode code)
{
    switch (code) {
    case QualityCode::Words: return verdictOfWords(text);
    case QualityCode::Numbers: return verdictOfNumber(text);
    case QualityCode::Truth: return verdictOfTruth(text);
    case QualityCode::ValidLetters: return verdictOfLetter(text, {'v', '\0', 'n', '\0'});
    case QualityCode::GoodLetters: return verdictOfLetter(text, {'g', 'u', 'b', '\0'});
    case QualityCode::ApprovedLetters: return verdictOfLetter(text, {'a', 'p', '\0', 'e'});
    }
    return Verdict::Unknown;
}

std::optional<QualityCode> qualityCodeOf(std::span<const std::string> texts, QualityHeader header)
{
    if (texts.empty())
        return {};
    for (const QualityCode code : {QualityCode::Words, QualityCode::Truth, QualityCode::Numbers,
                                   QualityCode::ValidLetters, QualityCode::GoodLetters, QualityCode::ApprovedLetters})
        if (all(texts, code) && isMeant(texts, code, header))
            return code;
    return {};
}

}  // namespace plotix
