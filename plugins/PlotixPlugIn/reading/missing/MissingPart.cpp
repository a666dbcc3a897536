#include "plugins/PlotixPlugIn/reading/missing/MissingPart.h"

namespace plotix {

namespace {

constexpr auto kStretches = "stretches";  // stored: never change
constexpr auto kStrip = "strip";

}  // namespace

MissingPart::MissingPart(ReadTrend& trend) : ReadingPart(trend), m_lines(trend)
{
    m_stretches = addAction(QT_TRANSLATE_NOOP("Plotix", "Show What Is &Missing"),
                            QT_TRANSLATE_NOOP("Plotix", "Hatches the times at which nothing valid was recorded."));
    m_strip =
        addAction(QT_TRANSLATE_NOOP("Plotix", "&Quality Strip"),
                  QT_TRANSLATE_NOOP("Plotix", "A row for each line at the foot of its lane: where it has records, "
                                              "where it has none, and where they are not valid."));
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

QVariantMap MissingPart::chosen() const
{
    QVariantMap choices;
    if (m_stretches->isChecked())
        choices.insert(QLatin1String(kStretches), true);
    if (m_strip->isChecked())
        choices.insert(QLatin1String(kStrip), true);
    return choices;
}

void MissingPart::choose(const QVariantMap& choices)
{
    m_stretches->setChecked(choices.value(QLatin1String(kStretches)).toBool());
    m_strip->setChecked(choices.value(QLatin1String(kStrip)).toBool());
    update();
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
    if (!graph || (!m_stretches->isChecked() && !m_strip->isChecked()))
        return m_layer.remove();
    m_layer.put(graph, PartLayer<MissingLayer>::Place::Beneath,
                [this] { return std::make_shared<MissingLayer>(m_lines); });
    m_layer->show(m_stretches->isChecked(), m_strip->isChecked(), trend().readSpan());
}

}  // namespace plotix
