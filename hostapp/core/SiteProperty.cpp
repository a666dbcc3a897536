#include "hostapp/core/SiteProperty.h"

#include <limits>

namespace plotix {

SiteProperty::SiteProperty(Description description, std::shared_ptr<const KTVUnitModel> unitModel)
    : m_description(std::move(description)), m_unitModel(std::move(unitModel))
{
}

SiteProperty::~SiteProperty() = default;

void SiteProperty::rename(const QString& name, const QString& propertyName)
{
    m_description.name = name;
    m_description.propertyName = propertyName;
}

void SiteProperty::setFormula(const PropertyFormula& formula, const QString& archivedUnit)
{
    m_description.formula = formula;
    m_description.archivedUnit = archivedUnit;
}

void SiteProperty::setUnit(const QString& unit)
{
    const QString before = m_description.unit;
    m_description.unit = unit;
    m_observations.notify(this, QStringLiteral("unit"), {before, unit});
    if (before != unit)
        emit changed();
}

double SiteProperty::unitValue() const
{
    return std::numeric_limits<double>::quiet_NaN();
}

QString SiteProperty::unitSymbol() const
{
    return m_unitModel ? m_unitModel->symbolForUnit(m_description.unit) : m_description.unit;
}

void SiteProperty::setColor(const QColor& color)
{
    const QColor before = m_description.color;
    m_description.color = color;
    m_observations.notify(this, QStringLiteral("color"), {before, color});
    if (before != color)
        emit changed();
}

void SiteProperty::setVisible(bool visible)
{
    if (m_description.visible == visible)
        return;
    m_description.visible = visible;
    emit changed();
}

void SiteProperty::addObserver(KTVPropertyObserver* observer, const QString& key, ObservationTag context)
{
    m_observations.add(observer, key, context);
}

void SiteProperty::removeObserver(KTVPropertyObserver* observer, const QString& key)
{
    m_observations.remove(observer, key);
}

}  // namespace plotix
