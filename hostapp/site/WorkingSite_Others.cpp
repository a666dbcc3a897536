// Two programs on one site: taking over what others store, without losing what was changed here.
//
// Rules of this part:
//  1. Nothing typed is lost in silence. A trend whose title or properties were changed here and elsewhere becomes two,
//     and that is told; one that others deleted while it was changed here stays.
//  2. What is shown of time belongs to whoever looks at it. A site without a user of its own, one that is served, takes
//     over spans as well, but for trends that it follows by itself.
//  3. What this program has stored itself is never told as another one's.

#include "hostapp/site/WorkingSite.h"

#include "hostapp/core/Defaults.h"
#include "hostapp/document/ArchivedReferences.h"
#include "hostapp/site/ModuleNames.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"

namespace plotix {

void WorkingSite::keepUp()
{
    m_isKeptUp = true;
}

void WorkingSite::takeInWhatOthersChanged()
{
    if (!m_isLoaded || !m_isKeptUp)
        return;
    storeAll();
    const QStringList told =
        takeIn(m_store.changes(this, [this](const QString& identifier, const auto& one, const auto& other) {
            const bool spansCount = m_use == Use::Elsewhere && !m_follower.isFollowing(listed(identifier).get());
            return !spansCount && showTheSame(one, other);
        }));
    if (told.size() == 1)
        emit changedByOthers(told.front());
    else if (!told.isEmpty())
        emit changedByOthers(tr("Another program changed %n trend(s).", nullptr, int(told.size())));
    if (m_use == Use::Elsewhere)
        followAgain();
    m_watch.recordsMayDiffer();
}

void WorkingSite::takeInChanges()
{
    if (!m_isLoaded || !m_isKeptUp)
        return;
    takeIn(m_store.changes(this));
    m_watch.recordsMayDiffer();
}

QStringList WorkingSite::takeIn(const PlugInStore::Changes& changes)
{
    QStringList told;
    for (const QString& identifier : changes.gone)
        if (const KTVPlugInPtr gone = listed(identifier)) {
            told << tr("Another program deleted the trend “%1”.").arg(titleOf(*gone));
            m_leaving = gone.get();  // letting go changes the selection, which stores all that is listed
            letGo(gone);
            m_leaving = nullptr;
        }
    for (const KTVPlugInPtr& fresh : changes.different)
        if (const KTVPlugInPtr old = listed(fresh->uniqueIdentifier())) {
            if (titleOf(*old) != titleOf(*fresh))
                told << tr("Another program renamed the trend “%1” to “%2”.").arg(titleOf(*old), titleOf(*fresh));
            else
                told << tr("Another program changed the trend “%1”.").arg(titleOf(*fresh));
            showInPlaceOf(old, fresh);
        }
    for (const KTVPlugInPtr& came : changes.came) {
        chooseReading(came.get(), reader());
        if (isToolbarPlugIn(*came)) {
            m_toolbarPlugIns.push_back(came);
            emit toolbarPlugInsChanged();
        } else {
            told << tr("Another program added the trend “%1”.").arg(titleOf(*came));
            m_sourceList.append(came);
            lookAfter(came);
        }
        came->didLoad();
        if (m_use == Use::Elsewhere && !isToolbarPlugIn(*came))
            loadViewAtSize(*came, kUsualGraphSize);
    }
    return told;
}

/// The new one is listed below the old one at first: a list that loses its selected row selects the next one.
void WorkingSite::showInPlaceOf(const KTVPlugInPtr& old, const KTVPlugInPtr& fresh)
{
    const std::optional<FollowSpan> followed = m_follower.followedSpan(old.get());
    m_leaving = old.get();
    chooseReading(fresh.get(), reader());
    m_sourceList.insert(m_sourceList.rowOf(old.get()) + 1, fresh);
    lookAfter(fresh);
    letGo(old);
    m_leaving = nullptr;
    fresh->didLoad();
    if (m_use == Use::Elsewhere)
        loadViewAtSize(*fresh, kUsualGraphSize);
    if (followed)
        m_follower.follow(fresh, *followed);
}

void WorkingSite::tell(const KTVPlugIn& plugIn, const PlugInStore::Stored& stored)
{
    if (stored.meeting == PlugInStore::Meeting::Restored)
        emit changedByOthers(
            tr("Another program deleted the trend “%1”, which was changed here: it stays.").arg(titleOf(plugIn)));
    if (stored.meeting == PlugInStore::Meeting::Both)
        emit changedByOthers(tr("The trend “%1” was changed in two programs at once: the other version is “%2”.")
                                 .arg(titleOf(plugIn), stored.kept));
}

std::vector<KTVPlugInPtr> WorkingSite::watchedTrends() const
{
    std::vector<KTVPlugInPtr> trends;
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        if (const KTVPlugInPtr trend = item->representedObject();
            trend->isViewLoaded() && !m_follower.isFollowing(trend.get()))
            trends.push_back(trend);
    return trends;
}

}  // namespace plotix
