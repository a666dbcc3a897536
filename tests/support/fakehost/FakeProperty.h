#pragma once

#include "plugins/PlotixPlugIn/host/KTVObservationRegistry.h"
#include "tests/support/fakehost/CallLog.h"
#include "tests/support/fakehost/FakeUnitModel.h"

#include <limits>
#include <optional>

/// A property of the fake agent, or a snapshot that is an exception in a record column.
///
/// Observers are told of every unit and colour that is set, equal ones too, as the contract leaves the comparison to
/// them. Adding and removing observations is logged. Main thread only.
namespace fakehost {

class FakeProperty : public KTVProperty {
public:
    struct Description {
        QString name = {};
        QString unit = {};          ///< the unit of `value`, and the current one at first
        QString propertyName = {};  ///< empty: the camel-case form of the name
        QColor color = Qt::red;
        std::uint32_t type = 0;
        bool visible = true;
        double value = std::numeric_limits<double>::quiet_NaN();
        bool valid = true;  ///< a NaN value is invalid all the same
    };

    /// `units` is shared; `log` borrowed, null for none.
    FakeProperty(Description description, std::shared_ptr<const FakeUnitModel> units, CallLog* log = nullptr);

    QString name() const override { return m_description.name; }
    QString propertyName() const override { return m_description.propertyName; }
    QString unit() const override { return m_unit; }
    void setUnit(const QString& unit) override;
    double unitValue() const override;
    QString unitSymbol() const override { return m_units->symbolForUnit(m_unit); }
    QColor color() const override { return m_description.color; }
    std::uint32_t type() const override { return m_description.type; }
    bool isValid() const override;
    bool visible() const override { return m_description.visible; }
    void addObserver(KTVPropertyObserver* observer, const QString& key, ObservationTag context) override;
    void removeObserver(KTVPropertyObserver* observer, const QString& key) override;

    void setColor(const QColor& color);
    void setVisible(bool visible) { m_description.visible = visible; }

    /// The unit its values were measured in, whatever is shown now.
    QString archivedUnit() const { return m_description.unit; }

    /// Live observations of both keys together.
    std::size_t observationCount() const { return m_observations.count(); }

private:
    void note(const QString& operation, const QString& key);

    Description m_description;
    QString m_unit;
    std::shared_ptr<const FakeUnitModel> m_units;
    CallLog* m_log;
    KTVObservationRegistry m_observations;
};

using FakePropertyPtr = std::shared_ptr<FakeProperty>;

}  // namespace fakehost
