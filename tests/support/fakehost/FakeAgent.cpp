#include "tests/support/fakehost/FakeAgent.h"

namespace fakehost {

FakeAgent::FakeAgent(QString uniqueIdentifier, std::shared_ptr<const FakeUnitModel> units, CallLog* log)
    : m_uniqueIdentifier(std::move(uniqueIdentifier)),
      m_units(std::move(units)),
      m_log(log),
      m_archiveManager(std::make_unique<FakeArchiveManager>(log))
{
}

FakeAnnotations& FakeAgent::annotate()
{
    if (!m_annotations)
        m_annotations = std::make_unique<FakeAnnotations>();
    return *m_annotations;
}

FakePropertyPtr FakeAgent::addProperty(FakeProperty::Description description)
{
    auto property = std::make_shared<FakeProperty>(std::move(description), m_units, m_log);
    m_properties.push_back(property);
    return property;
}

void FakeAgent::removeProperty(const QString& propertyName)
{
    std::erase_if(m_properties, [&](const KTVPropertyPtr& one) { return one->propertyName() == propertyName; });
}

FakePropertyPtr FakeAgent::property(const QString& propertyName) const
{
    return std::static_pointer_cast<FakeProperty>(properties().objectForKey(propertyName));
}

void FakeAgent::setSite(std::optional<QString> name, std::optional<QString> location)
{
    m_siteName = std::move(name);
    m_siteLocation = std::move(location);
}

std::vector<KTVAmendment> FakeAgent::amendmentsOf(const QString& propertyName, double from, double to) const
{
    ++m_amendmentsAsked;
    std::vector<KTVAmendment> told;
    if (const auto found = m_amendments.find(propertyName); found != m_amendments.end())
        for (const KTVAmendment& each : found->second)
            if (each.from <= to && each.to >= from)
                told.push_back(each);
    return told;
}

void FakeAgent::setAmendments(const QString& propertyName, std::vector<KTVAmendment> amendments)
{
    m_amendments[propertyName] = std::move(amendments);
}

}  // namespace fakehost
