#include "plugins/PlotixPlugIn/host/KTVObservationRegistry.h"

#include <algorithm>

void KTVObservationRegistry::add(KTVPropertyObserver* observer, const QString& key, ObservationTag context)
{
    if (!observer)
        return;
    dropEnded();
    m_observations.push_back({observer, observer->lifetime(), key, context, m_nextSerial++});
}

void KTVObservationRegistry::remove(KTVPropertyObserver* observer, const QString& key)
{
    dropEnded();
    const auto latest = std::find_if(m_observations.rbegin(), m_observations.rend(), [&](const Observation& one) {
        return one.observer == observer && one.key == key;
    });
    if (latest != m_observations.rend())
        m_observations.erase(std::next(latest).base());
}

void KTVObservationRegistry::notify(KTVProperty* object, const QString& key, const KTVPropertyChange& change)
{
    dropEnded();
    std::vector<std::uint64_t> addressed;
    for (const Observation& one : m_observations)
        if (one.key == key)
            addressed.push_back(one.serial);
    for (const std::uint64_t serial : addressed) {
        const Observation* found = find(serial);
        if (!found || found->lifetime.expired())
            continue;
        const ObservationTag context = found->context;
        found->observer->observeValueForKeyPath(key, object, change, context);
    }
}

std::size_t KTVObservationRegistry::count() const
{
    return static_cast<std::size_t>(std::count_if(m_observations.begin(), m_observations.end(),
                                                  [](const Observation& one) { return !one.lifetime.expired(); }));
}

void KTVObservationRegistry::dropEnded()
{
    std::erase_if(m_observations, [](const Observation& one) { return one.lifetime.expired(); });
}

const KTVObservationRegistry::Observation* KTVObservationRegistry::find(std::uint64_t serial) const
{
    const auto found =
        std::lower_bound(m_observations.begin(), m_observations.end(), serial,
                         [](const Observation& one, std::uint64_t wanted) { return one.serial < wanted; });
    return found != m_observations.end() && found->serial == serial ? &*found : nullptr;
}
