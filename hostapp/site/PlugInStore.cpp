#include "hostapp/site/PlugInStore.h"

#include "base/ReportableError.h"
#include "hostapp/core/Coder.h"
#include "hostapp/document/ArchivedReferences.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUuid>

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

PlugInStore::Changes PlugInStore::changes(KTVSiteWindowController* siteWindowController, const IsSame& isSame)
{
    Changes changes;
    std::map<qint64, QByteArray> archived;
    for (const ArchivedPlugIn& plugIn : m_document->archivedPlugIns()) {
        archived[plugIn.id] = plugIn.state;
        const auto known = std::find_if(m_stored.begin(), m_stored.end(),
                                        [&](const auto& stored) { return stored.second.id == plugIn.id; });
        // Two programs that look at different spans would else take each other's in turn, for ever.
        const auto looksTheSame = [&](const auto& stored) {
            return stored.second.state == plugIn.state ||
                   (isSame ? isSame(stored.first, stored.second.state, plugIn.state)
                           : showTheSame(stored.second.state, plugIn.state));
        };
        if (known != m_stored.end() && looksTheSame(*known))
            continue;
        const KTVPlugInPtr made = make(plugIn, siteWindowController);
        if (!made)
            continue;
        // One that was deleted and brought back has another row and the same identifier.
        const bool isListed = m_stored.contains(made->uniqueIdentifier());
        (isListed ? changes.different : changes.came).push_back(made);
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

/// What was changed is told by title and properties: spans belong to whoever looks at them.
PlugInStore::Stored PlugInStore::judge(const Known& known, const Row& present, const QByteArray& state)
{
    if (known.id == 0 || (present && present->state == known.state))
        return {};
    const bool isChangedHere = !showTheSame(known.state, state);
    if (!present)
        return {isChangedHere ? Meeting::Restored : Meeting::Waits, {}};
    if (showTheSame(known.state, present->state) || showTheSame(state, present->state))
        return {};
    if (!isChangedHere)
        return {Meeting::Waits, {}};
    const QString title = QCoreApplication::translate("PlugInStore", "%1 (changed elsewhere)");
    return {Meeting::Both, title.arg(titleIn(present->state))};
}

PlugInStore::Stored PlugInStore::store(const KTVPlugIn& plugIn)
{
    Known& known = m_stored[plugIn.uniqueIdentifier()];
    const QByteArray state = encodedPlugIn(plugIn);
    if (known.id != 0 && known.state == state)
        return {};
    Stored stored;
    const std::vector<qint64> ids = m_document->storePlugIns(known.id, [&](const Row& present) {
        stored = judge(known, present, state);
        if (stored.meeting == Meeting::Waits)
            return std::vector<ArchivedPlugIn>();
        std::vector<ArchivedPlugIn> rows{{present ? known.id : 0, classNameOf(plugIn), state}};
        if (stored.meeting == Meeting::Both) {
            const QString identifier = QUuid::createUuid().toString(QUuid::WithoutBraces);
            rows.push_back(
                {0, present->className, copyOfView(present->state, identifier, stored.kept).value_or(present->state)});
        }
        return rows;
    });
    if (!ids.empty())
        known = {ids.front(), state};
    return stored;
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
