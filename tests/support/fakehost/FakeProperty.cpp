#include "tests/support/fakehost/FakeProperty.h"

#include "plugins/PlotixPlugIn/host/KTVConverter.h"

#include <cmath>

namespace fakehost {

FakeProperty::FakeProperty(Description description, std::shared_ptr<const FakeUnitModel> units, CallLog* log)
    : m_description(std::move(description)), m_unit(m_description.unit), m_units(std::move(units)), m_log(log)
{
    if (m_description.propertyName.isEmpty())
        m_description.propertyName = camelCaseString(m_description.name);
}

void FakeProperty::setUnit(const QString& unit)
{
    const KTVPropertyChange change{m_unit, unit};
    m_unit = unit;
    m_observations.notify(this, QStringLiteral("unit"), change);
}

double FakeProperty::unitValue() const
{
    return m_units->convert(m_description.value, m_description.unit, m_unit);
}

bool FakeProperty::isValid() const
{
    return m_description.valid && !std::isnan(m_description.value);
}

void FakeProperty::setColor(const QColor& color)
{
    const KTVPropertyChange change{m_description.color, color};
    m_description.color = color;
    m_observations.notify(this, QStringLiteral("color"), change);
}

void FakeProperty::addObserver(KTVPropertyObserver* observer, const QString& key, ObservationTag context)
{
    note(QStringLiteral("addObserver"), key);
    m_observations.add(observer, key, context);
}

void FakeProperty::removeObserver(KTVPropertyObserver* observer, const QString& key)
{
    note(QStringLiteral("removeObserver"), key);
    m_observations.remove(observer, key);
}

void FakeProperty::note(const QString& operation, const QString& key)
{
    if (m_log)
        m_log->note(QStringLiteral("%1.%2 %3").arg(m_description.propertyName, operation, key));
}

}  // namespace fakehost
