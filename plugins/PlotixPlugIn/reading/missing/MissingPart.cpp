#include "plugins/PlotixPlugIn/reading/missing/MissingPart.h"

#include <QtGui/QActionGroup>

#include <algorithm>
#include <cmath>

namespace plotix {

namespace {

constexpr auto kStretches = "stretches";  // stored: never change
constexpr auto kAmended = "amended";
constexpr auto kStrip = "strip";
constexpr auto kLateBy = "lateBy";

struct Delay {
    double seconds;
    const char* text;
};

constexpr Delay kDelays[] = {{0, QT_TRANSLATE_NOOP("Plotix", "By &Any Time")},
                             {60, QT_TRANSLATE_NOOP("Plotix", "By More than a &Minute")},
                             {3600, QT_TRANSLATE_NOOP("Plotix", "By More than an &Hour")},
                             {86'400, QT_TRANSLATE_NOOP("Plotix", "By More than a &Day")}};

}  // namespace

MissingPart::MissingPart(ReadTrend& trend) : ReadingPart(trend), m_lines(trend, TrendLines::Amended::Told)
{
    m_stretches = addSwitch(kStretches, QT_TRANSLATE_NOOP("Plotix", "Sho&w What Is Missing"),
                            QT_TRANSLATE_NOOP("Plotix", "Hatches the times at which nothing valid was recorded."));
    m_amended = addSwitch(kAmended, QT_TRANSLATE_NOOP("Plotix", "Show Late an&d Corrected"),
                          QT_TRANSLATE_NOOP("Plotix", "Marks records that were added between others, and those whose "
                                                      "values were replaced, after the fact."));
    m_strip = addSwitch(kStrip, QT_TRANSLATE_NOOP("Plotix", "&Quality Strip"),
                        QT_TRANSLATE_NOOP("Plotix", "A row for each line at the foot of its lane: where it has "
                                                    "records, where it has none, and where they are not valid, late "
                                                    "or corrected."));
    for (Switch* each : switches())
        connect(each->action, &QAction::triggered, this, [this, each] {
            each->isSaid = true;
            update();
            emit chosenChanged();
        });
    addDelays();
}

MissingPart::~MissingPart() = default;

MissingPart::Switch MissingPart::addSwitch(const char* key, const char* text, const char* hint)
{
    auto* action = new QAction(localizedText(text), this);
    action->setCheckable(true);
    action->setToolTip(localizedText(hint));
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Values")));
    return {key, action};
}

void MissingPart::addDelays()
{
    auto* group = new QActionGroup(this);
    for (const Delay& delay : kDelays) {
        auto* action = new QAction(localizedText(delay.text), group);
        action->setCheckable(true);
        action->setChecked(delay.seconds == m_lateBy);
        action->setData(delay.seconds);
        action->setToolTip(localizedText(QT_TRANSLATE_NOOP("Plotix", "What came sooner is not called late.")));
        setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "Arrive&d Late")));
        connect(action, &QAction::triggered, this, [this, seconds = delay.seconds] {
            setLateBy(seconds);
            emit chosenChanged();
        });
        m_delays.push_back(action);
    }
}

void MissingPart::setLateBy(double seconds)
{
    m_lateBy = std::isfinite(seconds) ? std::max(0.0, seconds) : 0;
    for (QAction* action : m_delays)
        action->setChecked(action->data().toDouble() == m_lateBy);
    update();
}

std::vector<QAction*> MissingPart::actions() const
{
    std::vector<QAction*> actions{m_stretches.action, m_amended.action, m_strip.action};
    actions.insert(actions.end(), m_delays.begin(), m_delays.end());
    return actions;
}

QVariantMap MissingPart::chosen() const
{
    QVariantMap choices;
    for (const Switch* each : {&m_stretches, &m_amended, &m_strip})
        if (each->isSaid)
            choices.insert(QLatin1String(each->key), each->action->isChecked());
    if (m_lateBy > 0)
        choices.insert(QLatin1String(kLateBy), m_lateBy);
    return choices;
}

void MissingPart::choose(const QVariantMap& choices)
{
    for (Switch* each : switches()) {
        const QVariant wanted = choices.value(QLatin1String(each->key));
        each->isSaid = wanted.metaType() == QMetaType::fromType<bool>();
        each->action->setChecked(each->isSaid && wanted.toBool());
    }
    setLateBy(choices.value(QLatin1String(kLateBy)).toDouble());
    emit chosenChanged();
}

void MissingPart::linesChanged()
{
    m_lines.forget();
    update();
}

void MissingPart::update()
{
    const CPTXYGraphPtr graph = trend().graph();
    const MissingLayer::Shown shown{m_stretches.action->isChecked(), m_amended.action->isChecked(),
                                    m_strip.action->isChecked()};
    if (!graph || (!shown.stretches && !shown.amended && !shown.strip))
        return m_layer.remove();
    m_layer.put(graph, PartLayer<MissingLayer>::Place::Beneath,
                [this] { return std::make_shared<MissingLayer>(m_lines); });
    m_layer->show(shown, trend().readSpan());
}

}  // namespace plotix
