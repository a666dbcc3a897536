#include "hostapp/window/importing/ReadingFields.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>

#include <algorithm>

/// The fields about columns of quality: which there are, what in them means bad, and whether they count.
namespace plotix {

namespace {

QStringList trimmedParts(const QString& text, QChar sign)
{
    QStringList parts;
    for (const QString& part : text.split(sign))
        if (!part.trimmed().isEmpty())
            parts << part.trimmed();
    return parts;
}

}  // namespace

void ReadingFields::addQuality()
{
    m_quality = new QLineEdit(this);
    m_quality->setObjectName(QStringLiteral("quality"));
    m_quality->setToolTip(tr("Which column says of which other one whether its values are good, such as Status=Temp; "
                             "Status=* for all of the row, and a semicolon between several."));
    m_badWords = new QLineEdit(this);
    m_badWords->setObjectName(QStringLiteral("badWords"));
    m_badWords->setPlaceholderText(tr("the known ones"));
    m_badWords->setToolTip(tr("The words in columns of quality that mean bad, such as 1, Error; all others then mean "
                              "good."));
    m_form->addRow(tr("Qualit&y:"), m_quality);
    m_form->addRow(tr("&Bad words:"), m_badWords);
    m_fields[ImportOption::Quality] = m_quality;
    m_fields[ImportOption::BadWords] = m_badWords;
    for (QLineEdit* field : {m_quality, m_badWords})
        connect(field, &QLineEdit::textChanged, this, &ReadingFields::changed);
    m_ignoreQuality = new QCheckBox(tr("Take &values marked as bad too"), this);
    m_ignoreQuality->setToolTip(tr("All values are then good, whatever a column beside them says."));
    connect(m_ignoreQuality, &QCheckBox::toggled, this, &ReadingFields::changed);
    m_form->addRow(m_ignoreQuality);
}

void ReadingFields::setQuality(const ImportOptions& options)
{
    QStringList pairs;
    for (const auto& [quality, value] : options.quality)
        pairs << quality + QLatin1Char('=') + value;
    m_quality->setText(pairs.join(QStringLiteral("; ")));
    m_badWords->setText(options.badWords.join(QStringLiteral(", ")));
    m_ignoreQuality->setChecked(options.ignoreQuality);
}

void ReadingFields::addQualityTo(ImportOptions& options) const
{
    for (const QString& pair : trimmedParts(m_quality->text(), QLatin1Char(';')))
        options.quality.emplace_back(pair.section(QLatin1Char('='), 0, 0).trimmed(),
                                     pair.section(QLatin1Char('='), 1).trimmed());
    options.badWords = trimmedParts(m_badWords->text(), QLatin1Char(','));
    options.ignoreQuality = m_ignoreQuality->isChecked();
}

bool ReadingFields::isQualityWrong() const
{
    const QStringList pairs = trimmedParts(m_quality->text(), QLatin1Char(';'));
    return std::any_of(pairs.begin(), pairs.end(),
                       [](const QString& pair) { return pair.indexOf(QLatin1Char('=')) < 1; });
}

/// The columns of quality that were recognised.
void ReadingFields::showQualities(const ImportPreview& preview)
{
    QStringList headers;
    for (const ImportPreview::Column& column : preview.columns)
        if (!column.judges.isEmpty())
            headers << column.header;
    m_quality->setPlaceholderText(headers.isEmpty() ? tr("Automatic")
                                                    : tr("Automatic: %1").arg(headers.join(QStringLiteral(", "))));
}

}  // namespace plotix
