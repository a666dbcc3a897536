#pragma once

#include "plugins/PlotixPlugIn/host/KTVObservationRegistry.h"
#include "plugins/PlotixPlugIn/host/KTVProperty.h"
#include "plugins/PlotixPlugIn/host/KTVPropertyDescription.h"
#include "plugins/PlotixPlugIn/host/KTVUnitModel.h"

#include <QtCore/QObject>

#include <memory>

/// One measured quantity of an agent of a site document. The agent *shares* it with plug-ins. Main thread only.
namespace plotix {

class SiteProperty : public QObject, public KTVProperty {
    Q_OBJECT
public:
    struct Description : KTVPropertyDescription {
        qint64 id = 0;  ///< row in the document; 0 for one that is not stored
    };

    SiteProperty(Description description, std::shared_ptr<const KTVUnitModel> unitModel);
    ~SiteProperty() override;

    const Description& description() const { return m_description; }

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
