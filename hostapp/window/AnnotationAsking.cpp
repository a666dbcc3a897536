#include "hostapp/window/AnnotationAsking.h"

#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/window/SiteEditor.h"
#include "hostapp/window/annotating/LimitsDialog.h"

#include <algorithm>

namespace plotix {

AnnotationAsking::AnnotationAsking(Surroundings around, QObject* parent) : QObject(parent), m_around(std::move(around))
{
    m_around.site.siteDocument()->setAnnotationEditor(this);
}

AnnotationAsking::~AnnotationAsking()
{
    m_around.site.siteDocument()->setAnnotationEditor(nullptr);
}

QString AnnotationAsking::site() const
{
    return m_around.site.siteDocument()->path();
}

void AnnotationAsking::editLimits(const SiteAgent& agent, const QString& propertyName)
{
    const KTVPropertyPtr found = agent.properties().objectForKey(propertyName);
    const auto property = std::dynamic_pointer_cast<SiteProperty>(found);
    if (!property)
        return;
    const qint64 id = property->description().id;
    std::vector<SiteLimit> before = m_around.site.siteDocument()->limits();
    std::erase_if(before, [id](const SiteLimit& limit) { return limit.property != id; });
    LimitsDialog dialog(property->name(), property->unit(), before, m_around.windowInFront());
    if (dialog.exec() != QDialog::Accepted || dialog.limits() == before)
        return;
    m_around.editor.edit(tr("Limits of %1").arg(property->name()),
                         [site = site(), id, wanted = dialog.limits()](const EditProgress&) {
                             return changeLimits(site, id, [&](std::vector<SiteLimit>& limits) { limits = wanted; });
                         });
}

}  // namespace plotix
