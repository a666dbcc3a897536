#include "tests/support/fakehost/FakeBundle.h"

namespace fakehost {

QString FakeBundle::localizedString(const QString& key) const
{
    const auto found = m_translations.find(key);
    return found == m_translations.end() ? key : found->second;
}

QImage FakeBundle::imageNamed(const QString& name) const
{
    const auto found = m_images.find(name);
    return found == m_images.end() ? QImage() : found->second;
}

void FakeBundle::speakGerman()
{
    translate(QStringLiteral("Cancel"), QStringLiteral("Abbrechen"));
    translate(QStringLiteral("Refresh"), QStringLiteral("Aktualisieren"));
}

void FakeHelpManager::openHelpAnchor(const QString& anchor)
{
    m_log->note(QStringLiteral("helpManager.openHelpAnchor ") + anchor);
}

}  // namespace fakehost
