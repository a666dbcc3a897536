#pragma once

#include "hostapp/core/PropertyFormula.h"
#include "plugins/PlotixPlugIn/host/KTVObservationRegistry.h"
#include "plugins/PlotixPlugIn/host/KTVProperty.h"
#include "plugins/PlotixPlugIn/host/KTVPropertyDescription.h"
#include "plugins/PlotixPlugIn/host/KTVUnitModel.h"

#include <QtCore/QObject>

#include <memory>
#include <optional>

/// One measured quantity of an agent of a site document. The agent *shares* it with plug-ins. Main thread only.
namespace plotix {

class SiteProperty : public QObject, public KTVProperty {
    Q_OBJECT
public:
    struct Description : KTVPropertyDescription {
        qint64 id = 0;                           ///< row in the document; 0 for one that is not stored
        std::optional<PropertyFormula> formula;  ///< of a computed property, which has no records of its own
    };

    SiteProperty(Description description, std::shared_ptr<const KTVUnitModel> unitModel);
    ~SiteProperty() override;

    const Description& description() const { return m_description; }
    bool isComputed() const { return m_description.formula.has_value(); }
    /// What it is worked out from from now on, and the unit of that; the document has stored both.
    void setFormula(const PropertyFormula& formula, const QString& archivedUnit);

    /// What the property is called from now on; the document has stored it.
    void rename(const QString& name, const QString& propertyName);

    QString name() const override { return m_description.name; }
    QString propertyName() const override { return m_description.propertyName; }
    QString unit() const override { return m_description.unit; }
    void setUnit(const QString& unit) override;  ///< tells observers old and new unit, also when they are equal
    double unitValue() const override;           ///< NaN: an agent's property holds no value of its own
    QString unitSymbol() const override;
    QColor color() const override { return m_description.color; }
    void setColor(const QColor& color);
    std::uint32_t type() const override { return m_description.type; }
    bool isValid() const override { return false; }
    bool visible() const override { return m_description.visible; }
    void setVisible(bool visible);

    void addObserver(KTVPropertyObserver* observer, const QString& key, ObservationTag context) override;
    void removeObserver(KTVPropertyObserver* observer, const QString& key) override;

signals:
    void changed();  ///< unit, colour or visibility; the document stores it

private:
    Description m_description;
    std::shared_ptr<const KTVUnitModel> m_unitModel;
    KTVObservationRegistry m_observations;
};

}  // namespace plotix
