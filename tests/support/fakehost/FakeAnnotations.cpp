#include "tests/support/fakehost/FakeAnnotations.h"

namespace fakehost {

std::vector<KTVLimit> FakeAnnotations::limitsOf(const QString& propertyName) const
{
    const auto found = m_limits.find(propertyName);
    return found == m_limits.end() ? std::vector<KTVLimit>() : found->second;
}

void FakeAnnotations::addNote(double from, double to, const QStringList& propertyNames)
{
    asked << QStringLiteral("add note about ") + propertyNames.join(QLatin1Char(','));
    spansAsked.emplace_back(from, to);
}

void FakeAnnotations::setLimits(const QString& propertyName, const std::vector<KTVLimit>& limits)
{
    m_limits[propertyName] = limits;
    emit changed();
}

void FakeAnnotations::setNotes(const std::vector<KTVNote>& notes)
{
    m_notes = notes;
    emit changed();
}

}  // namespace fakehost
