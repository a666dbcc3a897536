#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"
#include "plugins/PlotixPlugIn/host/ObservationTag.h"

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QColor>

#include <cstdint>
#include <memory>
#include <vector>

class KTVProperty;

/// What a change notice carries: the values before and after.
struct KTVPropertyChange {
    QVariant oldValue;
    QVariant newValue;
};

/// Receives change notices of properties. An observation ends by itself when its observer is destroyed. Main thread
/// only.
class KTVHOST_EXPORT KTVPropertyObserver {
public:
    KTVPropertyObserver();
    virtual ~KTVPropertyObserver();
    KTVPropertyObserver(const KTVPropertyObserver&) = delete;
    KTVPropertyObserver& operator=(const KTVPropertyObserver&) = delete;

    virtual void observeValueForKeyPath(const QString& keyPath, KTVProperty* object, const KTVPropertyChange& change,
                                        ObservationTag context) = 0;

    std::weak_ptr<const void> lifetime() const { return m_lifetime; }

private:
    std::shared_ptr<const void> m_lifetime;  // owns; expires with the observer
};

/// The tag of observations of a property's "unit".
inline constexpr ObservationTag kUnit{"unit"};

/// The kind of property that is never plotted: four characters 'WPSt'. Stored: never change.
inline constexpr std::uint32_t kPropertyTypeNeverPlotted = 0x57505374;

/// One measured quantity; in a fetched record, a snapshot of it at that record's time.
///
/// Agents *share* their properties with the plug-ins; record columns hand out snapshots on demand.
/// Observable keys: "unit" (values are QString) and "color" (values are QColor). Main thread only,
/// except snapshots of a record dictionary that has not been handed over yet.
class KTVHOST_EXPORT KTVProperty {
public:
    virtual ~KTVProperty();

    virtual QString name() const = 0;          ///< display name
    virtual QString propertyName() const = 0;  ///< key: the camel-case form of the display name
    virtual QString unit() const = 0;          ///< unit as text, such as "degC"; compared as text
    virtual void setUnit(const QString& unit) = 0;
    virtual double unitValue() const = 0;    ///< the value in the current unit; NaN when there is none
    virtual QString unitSymbol() const = 0;  ///< how the unit is written for people, such as "°C"
    virtual QColor color() const = 0;
    virtual std::uint32_t type() const = 0;  ///< four-character code
    virtual bool isValid() const = 0;        ///< a NaN value is never valid
    virtual bool visible() const = 0;        ///< whether the property is offered to the user

    /// Each call adds one observation of `key`, hence one notice a change. *Borrows* the observer; the observation ends
    /// with it.
    virtual void addObserver(KTVPropertyObserver* observer, const QString& key, ObservationTag context) = 0;
    /// Removes one observation of `key` by `observer`; if there is none, nothing happens.
    virtual void removeObserver(KTVPropertyObserver* observer, const QString& key) = 0;
};

using KTVPropertyPtr = std::shared_ptr<KTVProperty>;
using KTVPropertyList = std::vector<KTVPropertyPtr>;
