#include "hostapp/window/importing/QualityTexts.h"

#include "hostapp/core/Localization.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

#include <algorithm>
#include <limits>

namespace plotix {

namespace {

using What = ImportFinding::What;

/// The context of these texts' translations.
class QualityTexts {
    Q_DECLARE_TR_FUNCTIONS(QualityTexts)
};

int pluralOf(std::size_t count)
{
    return static_cast<int>(std::min<std::size_t>(count, std::numeric_limits<int>::max()));
}

/// Many columns would push everything else out of sight.
QString firstOf(const QStringList& columns)
{
    constexpr qsizetype kMostListed = 3;
    const QString list =
        QStringLiteral("“%1”").arg(columns.first(std::min(kMostListed, columns.size())).join(QStringLiteral("”, “")));
    return columns.size() <= kMostListed ? list : QualityTexts::tr("%1 and others").arg(list);
}

QString textOfRecognised(const ImportFinding& finding)
{
    const QString judged = finding.text.isEmpty() ? QualityTexts::tr("%n column(s)", nullptr, pluralOf(finding.found))
                                                  : QStringLiteral("“%1”").arg(finding.text);
    return QualityTexts::tr("Which values of %1 are bad is read in %2; they are kept and marked as invalid.")
        .arg(judged, firstOf(finding.columns));
}

}  // namespace

QString textOfQuality(const ImportFinding& finding)
{
    switch (finding.what) {
    case What::QualityRecognised: return textOfRecognised(finding);
    case What::QualityHasNoWords:
        return QualityTexts::tr("column “%1” does not say which values are bad in words or numbers that are known, but "
                                "such as “%2”; enter those that do under Bad words")
            .arg(finding.column, finding.text);
    case What::QualityNotSure:
        return QualityTexts::tr("“%1” seems to say which values are bad, but not what “%2” means; its values are taken "
                                "as good. If it does, enter it under Quality.")
            .arg(finding.column, finding.text);
    case What::QualityNotAssigned:
        return QualityTexts::tr("“%1” seems to say which values are bad, but not of which column; they are taken as "
                                "good. If it does, enter it under Quality.")
            .arg(finding.column);
    case What::QualityWordsUnknown:
        return QualityTexts::tr("“%1” says neither good nor bad (%2 times); such values are taken as good. If it means "
                                "bad, enter all such words under Bad words")
            .arg(finding.text, QString::number(finding.found));
    default: return {};
    }
}

QString textOfMarked(std::size_t values, const QString& quality)
{
    return QualityTexts::tr("%1 value(s) are marked as bad by “%2”", nullptr, pluralOf(values))
        .arg(QLocale(installedLanguage()).toString(static_cast<qulonglong>(values)), quality);
}

QString textOfJudging(const QStringList& columns)
{
    return columns.size() == 1
               ? QualityTexts::tr("says which values of “%1” are bad").arg(columns.front())
               : QualityTexts::tr("says which values of %n column(s) are bad", nullptr, pluralOf(columns.size()));
}

}  // namespace plotix
