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

MissingPart::MissingPart(ReadTrend& trend) : ReadingPart(trend), m_lines(trend)
{
    m_stretches = addAction(QT_TRANSLATE_NOOP("Plotix", "Show What Is &Missing"),
                            QT_TRANSLATE_NOOP("Plotix", "Hatches the times at which nothing valid was recorded."));
    m_amended = addAction(QT_TRANSLATE_NOOP("Plotix", "Show &Late and Corrected"),
                          QT_TRANSLATE_NOOP("Plotix", "Marks records that were added between others, and those whose "
                                                      "values were replaced, after the fact."));
    m_strip =
        addAction(QT_TRANSLATE_NOOP("Plotix", "&Quality Strip"),
                  QT_TRANSLATE_NOOP("Plotix", "A row for each line at the foot of its lane: where it has records, "
                                              "where it has none, and where they are not valid, late or corrected."));
    addDelays();
}

MissingPart::~MissingPart() = default;

QAction* MissingPart::addAction(const char* text, const char* hint)
{
    auto* action = new QAction(localizedText(text), this);
    action->setCheckable(true);
    action->setToolTip(localizedText(hint));
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Values")));
    connect(action, &QAction::triggered, this, [this] {
        update();
        emit chosenChanged();
    });
    return action;
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
        setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "Arrived La&te")));
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
    std::vector<QAction*> actions{m_stretches, m_amended, m_strip};
    actions.insert(actions.end(), m_delays.begin(), m_delays.end());
    return actions;
}

QVariantMap MissingPart::chosen() const
{
    QVariantMap choices;
    if (m_stretches->isChecked())
        choices.insert(QLatin1String(kStretches), true);
    if (m_amended->isChecked())
        choices.insert(QLatin1String(kAmended), true);
    if (m_lateBy > 0)
        choices.insert(QLatin1String(kLateBy), m_lateBy);
    if (m_strip->isChecked())
        choices.insert(QLatin1String(kStrip), true);
    return choices;
}

void MissingPart::choose(const QVariantMap& choices)
{
    m_stretches->setChecked(choices.value(QLatin1String(kStretches)).toBool());
    m_amended->setChecked(choices.value(QLatin1String(kAmended)).toBool());
    m_strip->setChecked(choices.value(QLatin1String(kStrip)).toBool());
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
    const MissingLayer::Shown shown{m_stretches->isChecked(), m_amended->isChecked(), m_strip->isChecked()};
    if (!graph || (!shown.stretches && !shown.amended && !shown.strip))
        return m_layer.remove();
    m_layer.put(graph, PartLayer<MissingLayer>::Place::Beneath,
                [this] { return std::make_shared<MissingLayer>(m_lines); });
    m_layer->show(shown, trend().readSpan());
}

}  // namespace plotix
