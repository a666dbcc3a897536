#pragma once

#include "plugins/PlotixPlugIn/host/KTVProperty.h"

#include <vector>

/// The observations of one property. An implementation of KTVProperty *owns* one. Main thread only.
class KTVHOST_EXPORT KTVObservationRegistry {
public:
    void add(KTVPropertyObserver* observer, const QString& key, ObservationTag context);
    void remove(KTVPropertyObserver* observer, const QString& key);  ///< one; the latest added first

    /// Tells every live observation of `key`, in the order they were added. Observers may add or remove meanwhile:
    /// removed ones are told no more, added ones are told from the next notice on.
    /// Requires: `object` and this registry outlive the call.
    void notify(KTVProperty* object, const QString& key, const KTVPropertyChange& change);

    std::size_t count() const;  ///< live observations

private:
    struct Observation {
        KTVPropertyObserver* observer;
        std::weak_ptr<const void> lifetime;
        QString key;
        ObservationTag context;
        std::uint64_t serial;
    };
    void dropEnded();
    const Observation* find(std::uint64_t serial) const;

    std::vector<Observation> m_observations;  // ascending serials
    std::uint64_t m_nextSerial = 0;
};
