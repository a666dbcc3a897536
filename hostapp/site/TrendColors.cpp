#include "hostapp/site/TrendColors.h"

#include "hostapp/core/SiteProperty.h"
#include "hostapp/document/PropertyPalette.h"
#include "hostapp/site/PlugInOperations.h"

#include <QtCore/QObject>

#include <algorithm>

namespace plotix {

namespace {

bool isTaken(const std::vector<QColor>& taken, const QColor& color)
{
    return std::any_of(taken.begin(), taken.end(), [&](const QColor& each) { return each.rgb() == color.rgb(); });
}

std::vector<QColor> colorsOf(const KTVPropertyList& properties)
{
    std::vector<QColor> colors;
    for (const KTVPropertyPtr& property : properties)
        colors.push_back(property->color());
    return colors;
}

/// One that no line has, if there is any; of several the one that the others have least.
QColor colorFor(const std::vector<QColor>& lines, const std::vector<QColor>& others)
{
    std::vector<QColor> taken = others;
    for (std::size_t times = 0; times <= others.size(); ++times)
        taken.insert(taken.end(), lines.begin(), lines.end());
    return freeColor(taken);
}

/// `before`: the keys of properties that keep their colours. New ones stand last.
void tellLinesApart(const KTVPlugIn& plugIn, const QStringList& keys, const QStringList& before)
{
    if (!plugIn.agent())
        return;
    const KTVPropertyCollection known = plugIn.agent()->properties();
    KTVPropertyList lines;
    std::size_t kept = 0;
    for (const QString& key : keys)
        if (const KTVPropertyPtr property = known.objectForKey(key)) {
            lines.push_back(property);
            kept += before.contains(key) ? 1 : 0;
        }
    plotix::tellLinesApart(lines, kept, known.objects());
}

/// Looks after one trend; a child of the object that tells what the trend reads.
class LineColors : public QObject {
    Q_OBJECT
public:
    LineColors(const KTVPlugInPtr& plugIn, QObject* parent)
        : QObject(parent), m_plugIn(plugIn), m_keys(plottedKeys(plugIn.get()))
    {
    }

public slots:
    /// Whatever comes to the trend is read first.
    void look()
    {
        const KTVPlugInPtr plugIn = m_plugIn.lock();
        const QStringList keys = plugIn ? plottedKeys(plugIn.get()) : m_keys;
        if (const QStringList before = std::exchange(m_keys, keys); before != keys)
            tellLinesApart(*plugIn, keys, before);
    }

private:
    std::weak_ptr<KTVPlugIn> m_plugIn;
    QStringList m_keys;
};

}  // namespace

void tellLinesApart(const KTVPropertyList& properties, std::size_t kept, const KTVPropertyList& others)
{
    std::vector<QColor> all = colorsOf(properties), before;
    const std::vector<QColor> elsewhere = colorsOf(others);
    for (const KTVPropertyPtr& property : properties) {
        auto* own = dynamic_cast<SiteProperty*>(property.get());
        if (own && before.size() >= kept && isTaken(before, property->color())) {
            const QColor color = colorFor(all, elsewhere);
            if (isTaken(all, color))
                return;  // none is free
            own->setColor(color);
            all.push_back(color);
        }
        before.push_back(property->color());
    }
}

void tellLinesApart(const KTVPlugIn* plugIn)
{
    if (plugIn)
        tellLinesApart(*plugIn, plottedKeys(plugIn), {});
}

void keepLinesApart(const KTVPlugInPtr& plugIn)
{
    QObject* reading = readSpansOf(plugIn.get());
    if (!reading || reading->metaObject()->indexOfSignal("spanMoved()") < 0)
        return;
    QObject::connect(reading, SIGNAL(spanMoved()), new LineColors(plugIn, reading), SLOT(look()));
}

}  // namespace plotix

#include "TrendColors.moc"
