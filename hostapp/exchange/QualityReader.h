#pragma once

#include "hostapp/exchange/ImportFinding.h"
#include "hostapp/exchange/QualityWords.h"

#include <QtCore/QStringList>

#include <string>

namespace plotix {

/// Reads one column of quality, cell by cell: whether the values it judges are marked as bad. What is uncertain is not
/// bad, nor is an unknown text or none; unknown ones are counted. *Owned* by a row source; one thread.
class QualityReader {
public:
    /// With words from the user these mark values as bad, whatever the case, and no others do.
    QualityReader(QualityCode code, const QStringList& badWords);

    enum class Mark { Good, Bad, Unknown };
    /// Fast for the first texts of which a column mostly has no more.
    Mark read(std::string_view text)
    {
        for (const auto& [known, mark] : m_known)
            if (known == text)
                return mark;
        return learn(text);
    }

    void countUnknown(std::string_view text, qint64 line);
    std::size_t unknown() const { return m_unknown; }
    const ImportFinding& firstUnknown() const { return m_firstUnknown; }  ///< line and text

private:
    Mark learn(std::string_view text);
    Mark markOf(std::string_view text) const;

    QualityCode m_code;
    std::vector<std::string> m_badWords;  // folded
    std::vector<std::pair<std::string, Mark>> m_known;
    std::size_t m_unknown = 0;
    ImportFinding m_firstUnknown{.what = ImportFinding::What::QualityWordsUnknown};
};

}  // namespace plotix
