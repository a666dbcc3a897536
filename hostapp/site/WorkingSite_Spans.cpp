// What the trends of a site show of time: reading what is missing, settling before anything leaves, following.

#include "hostapp/site/WorkingSite.h"

#include "base/ReportableError.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/site/TrendColors.h"
#include "hostapp/site/WindowMemory.h"
#include "records/store/RecordStore.h"

namespace plotix {

void WorkingSite::lookAfter(const KTVPlugInPtr& plugIn)
{
    sendToReadSpans(plugIn.get(), "setSpanMarked", true);
    if (m_use != Use::OnScreen)
        return;
    m_reader.lookAfter(plugIn);
    if (isStored())
        keepLinesApart(plugIn);
}

bool WorkingSite::settle(KTVPlugIn& plugIn, Wanted wanted, const Wait& wait) const
{
    constexpr int kMostRounds = 4;  // a wait, the dates, the records, and one round to see that all is well
    for (int round = 0; round < kMostRounds; ++round) {
        const std::optional<TrendSpans> spans = spansOf(&plugIn);
        const TrendNeed need = spans ? needOf(*spans, wanted) : TrendNeed::Nothing;
        if (need == TrendNeed::Nothing)
            return true;
        if (need == TrendNeed::OtherDates)
            throw ReportableError(tr("The “from” date lies after the “to” date; choose other dates first."));
        meet(need, plugIn, *spans);
        if (!wait())
            return false;
    }
    return true;
}

void WorkingSite::settle(KTVPlugIn& plugIn, Wanted wanted) const
{
    settle(plugIn, wanted, [this] {
        requireRecords();
        return true;
    });
}

std::optional<double> WorkingSite::firstRecordOf(const KTVPlugIn& plugIn) const
{
    const auto agent = plugIn.agent() ? m_document->agentWithIdentifier(plugIn.agent()->uniqueIdentifier()) : nullptr;
    try {
        const auto extent = agent ? m_document->records()->extent(agent->id()) : std::nullopt;
        return extent ? std::optional(extent->first) : std::nullopt;
    } catch (const ReportableError&) {  // reading says why they cannot be had
        return std::nullopt;
    }
}

void WorkingSite::followAgain()
{
    const WindowState state = readWindowState(*m_document);
    for (const KTVSourceListItemPtr& item : m_sourceList.items()) {
        const QString identifier = item->representedObject()->uniqueIdentifier();
        const auto span = state.followSpans.find(identifier);
        const auto chosen = span == state.followSpans.end() ? std::nullopt : followSpanNamed(span->second);
        if (state.followed.contains(identifier))
            m_follower.follow(item->representedObject(), chosen.value_or(FollowSpan::PresentLength));
        else if (m_use == Use::Elsewhere)  // on screen it is the user who chooses
            m_follower.stopFollowing(item->representedObject().get());
    }
}

QStringList WorkingSite::followedTrends() const
{
    QStringList identifiers;
    for (const KTVSourceListItemPtr& item : m_sourceList.items())
        if (m_follower.isFollowing(item->representedObject().get()))
            identifiers << item->representedObject()->uniqueIdentifier();
    return identifiers;
}

std::map<QString, QString> WorkingSite::followedSpans() const
{
    std::map<QString, QString> names;
    for (const KTVSourceListItemPtr& item : m_sourceList.items()) {
        const auto span = m_follower.followedSpan(item->representedObject().get());
        if (span && *span != FollowSpan::PresentLength)
            names[item->representedObject()->uniqueIdentifier()] = followSpanName(*span);
    }
    return names;
}

}  // namespace plotix
