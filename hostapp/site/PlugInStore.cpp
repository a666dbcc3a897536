#include "hostapp/site/PlugInStore.h"

#include "base/ReportableError.h"
#include "hostapp/core/Coder.h"
#include "hostapp/document/ArchivedReferences.h"

#include <algorithm>
#include <iterator>

namespace plotix {

QString classNameOf(const KTVPlugIn& plugIn)
{
    return QString::fromLatin1(plugIn.metaObject()->className());
}

PlugInStore::PlugInStore(std::shared_ptr<SiteDocument> document, KTVPlugInModule* module)
    : m_document(std::move(document)), m_module(module)
{
}

std::vector<KTVPlugInPtr> PlugInStore::load(KTVSiteWindowController* siteWindowController)
{
    std::vector<KTVPlugInPtr> plugIns;
    m_unreadableCount = 0;
    for (const ArchivedPlugIn& archived : m_document->archivedPlugIns()) {
        if (KTVPlugInPtr plugIn = make(archived, siteWindowController)) {
            m_stored[plugIn->uniqueIdentifier()] = {archived.id, archived.state};
            plugIns.push_back(std::move(plugIn));
        } else {
            ++m_unreadableCount;
        }
    }
    return plugIns;
}

PlugInStore::Changes PlugInStore::changes(KTVSiteWindowController* siteWindowController)
{
    Changes changes;
    std::map<qint64, QByteArray> archived;
    for (const ArchivedPlugIn& plugIn : m_document->archivedPlugIns()) {
        archived[plugIn.id] = plugIn.state;
        const auto known = std::find_if(m_stored.begin(), m_stored.end(),
                                        [&](const auto& stored) { return stored.second.id == plugIn.id; });
        // Two programs that look at different spans would else take each other's in turn, for ever.
        if (known != m_stored.end() &&
            (known->second.state == plugIn.state || showTheSame(known->second.state, plugIn.state)))
            continue;
        const KTVPlugInPtr made = make(plugIn, siteWindowController);
        if (!made)
            continue;
        (known == m_stored.end() ? changes.came : changes.different).push_back(made);
        m_stored[made->uniqueIdentifier()] = {plugIn.id, plugIn.state};
    }
    for (auto stored = m_stored.begin(); stored != m_stored.end();) {
        const bool isGone = stored->second.id != 0 && !archived.contains(stored->second.id);
        if (isGone)
            changes.gone << stored->first;
        stored = isGone ? m_stored.erase(stored) : std::next(stored);
    }
    return changes;
}

KTVPlugInPtr PlugInStore::make(const ArchivedPlugIn& archived, KTVSiteWindowController* siteWindowController)
{
    try {
        const auto agent = [document = m_document.get()](const QString& identifier) -> KTVAgentPtr {
            return document->agentWithIdentifier(identifier);
        };
        Decoder decoder(archived.state, {agent, siteWindowController});
        return m_module->instantiate(archived.className, decoder);
    } catch (const ReportableError&) {
        return nullptr;  // the caller counts and reports it; the state stays for a program that can read it
    }
}

void PlugInStore::store(const KTVPlugIn& plugIn)
{
    Stored& stored = m_stored[plugIn.uniqueIdentifier()];
    QByteArray state = encodedPlugIn(plugIn);
    if (stored.id != 0 && stored.state == state)
        return;
    stored.id = m_document->storePlugIn({stored.id, classNameOf(plugIn), state});
    stored.state = std::move(state);
}

void PlugInStore::remove(const KTVPlugIn& plugIn)
{
    const auto stored = m_stored.find(plugIn.uniqueIdentifier());
    if (stored == m_stored.end())
        return;
    m_document->removePlugIn(stored->second.id);
    m_stored.erase(stored);
}

}  // namespace plotix
