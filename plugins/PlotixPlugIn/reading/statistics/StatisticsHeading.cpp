#include "plugins/PlotixPlugIn/reading/statistics/StatisticsHeading.h"

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QHBoxLayout>

namespace plotix {

namespace {

/// Which one is on must be seen at a glance, and where the focus is; styles differ too much in both.
constexpr auto kSwitchStyle =
    "QToolButton { padding: 2px 9px; border: 1px solid palette(mid); background: palette(button); }"
    "QToolButton:checked { background: palette(highlight); color: palette(highlighted-text); }"
    "QToolButton:focus { border-color: palette(bright-text); }";

}  // namespace

StatisticsHeading::StatisticsHeading(QWidget* parent)
    : QWidget(parent), m_span(new QLabel(this)), m_stop(new QToolButton(this))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    auto* title = new QLabel(localizedText(QT_TRANSLATE_NOOP("Plotix", "Statistics of")), this);
    title->setContentsMargins(0, 0, 8, 0);
    row->addWidget(title);
    addButton(StatisticsOver::Fetched, localizedText(QT_TRANSLATE_NOOP("Plotix", "fetched")),
              localizedText(QT_TRANSLATE_NOOP("Plotix", "Everything that was read")));
    addButton(StatisticsOver::Visible, localizedText(QT_TRANSLATE_NOOP("Plotix", "visible")),
              localizedText(QT_TRANSLATE_NOOP("Plotix", "The times that the graph shows")));
    addButton(StatisticsOver::Marked, localizedText(QT_TRANSLATE_NOOP("Plotix", "A to B")),
              localizedText(QT_TRANSLATE_NOOP("Plotix", "The time between the marks A and B")));
    row->addStretch(1);
    m_span->setForegroundRole(QPalette::PlaceholderText);
    row->addWidget(m_span);
    m_stop->setText(localizedText(QT_TRANSLATE_NOOP("Plotix", "Stop")));
    m_stop->setToolTip(localizedText(QT_TRANSLATE_NOOP("Plotix", "Leave out what is still being worked out")));
    m_stop->hide();
    row->addSpacing(8);
    row->addWidget(m_stop);
    connect(m_stop, &QToolButton::clicked, this, &StatisticsHeading::stopped);
}

void StatisticsHeading::addButton(StatisticsOver over, const QString& text, const QString& hint)
{
    auto* group = findChild<QButtonGroup*>();
    if (!group)
        group = new QButtonGroup(this);
    auto* button = new QToolButton(this);
    button->setText(text);
    button->setToolTip(hint);
    button->setAccessibleName(localizedText(QT_TRANSLATE_NOOP("Plotix", "Statistics of")) + u' ' + text);
    button->setStyleSheet(QLatin1String(kSwitchStyle));
    button->setCheckable(true);
    button->setFocusPolicy(Qt::StrongFocus);
    group->addButton(button);
    static_cast<QHBoxLayout*>(layout())->addWidget(button);
    m_buttons[static_cast<std::size_t>(over)] = button;
    // On a toggle and not on a click: the arrow keys choose the next one without a click.
    connect(button, &QToolButton::toggled, this, [this, over](bool isOn) {
        if (isOn)
            emit chosen(over);
    });
}

void StatisticsHeading::show(const State& state)
{
    const QSignalBlocker quiet(this);
    button(StatisticsOver::Marked)->setEnabled(state.isMarked || state.over == StatisticsOver::Marked);
    button(state.over)->setChecked(true);
    m_span->setText(state.span);
    m_stop->setVisible(state.isWorking);
}

}  // namespace plotix
