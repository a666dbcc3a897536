// The collapsible details panel.
//
// Rules of this room:
//  1. Showing and hiding are relative to where the parts are at that moment; nothing here asks whether the panel is
//     shown already. Only the button's action toggles.
//  2. The flag is written before the animation starts, so that a document saved meanwhile holds the new state.
//  3. The date panel's height follows its width, at every resize.
//  4. The interface description lays the panel out as shown; a view that loads closed hides it from there.

#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"

#include "plugins/PlotixPlugIn/DatePanelLayout.h"
#include "plugins/PlotixPlugIn/TrendViewArrangement.h"

#include <QtWidgets/QCheckBox>

namespace {

constexpr int kDatePanelHeight = 40;  // points, in one row; as in the interface description

/// 1 for on, 0 for off, -1 for mixed.
int stateOf(const QObject* button)
{
    if (const auto* checkBox = qobject_cast<const QCheckBox*>(button))
        return checkBox->checkState() == Qt::PartiallyChecked ? -1 : checkBox->isChecked();
    const auto* plainButton = qobject_cast<const QAbstractButton*>(button);
    return plainButton && plainButton->isChecked() ? 1 : 0;
}

}  // namespace

TrendViewArrangement* KTVPlotixPlugIn::arrangement()
{
    if (m_arrangement)
        return m_arrangement;
    const QWidget* rootView = m_dragDropView ? m_dragDropView->parentWidget() : nullptr;
    const TrendViewArrangement::Parts parts{.panel = m_propertyDetailsView.data(),
                                            .button = m_propertyDetailsDisclosureButton.data(),
                                            .label = m_propertyDetailsTextField.data(),
                                            .graph = m_hostView.data(),
                                            .dates = m_dataClusterHostView.data(),
                                            .sharing = m_sharingButton.data()};
    m_arrangement = new TrendViewArrangement(parts, rootView ? rootView->size() : QSize(0, 0), this);
    connect(m_arrangement, &TrendViewArrangement::animationDidEnd, this, &KTVPlotixPlugIn::animationDidEnd);
    return m_arrangement;
}

void KTVPlotixPlugIn::rootViewDidResize(const QSize& /*oldSize*/, const QSize& newSize)
{
    arrangement()->followSize(newSize);
    fitDatePanel();
}

// A narrow date panel wraps; the graph makes room for its rows.
void KTVPlotixPlugIn::fitDatePanel()
{
    const QWidget* panel = m_dataCluster ? m_dataCluster->view() : nullptr;
    const auto* layout = panel ? qobject_cast<const DatePanelLayout*>(panel->layout()) : nullptr;
    if (layout && m_dataClusterHostView && m_dataClusterHostView->isAncestorOf(panel))
        arrangement()->setDatesHeight(kDatePanelHeight + layout->extraHeight(m_dataClusterHostView->width()));
}

void KTVPlotixPlugIn::propertyDetailsDisclosureButtonAction(QObject* sender)
{
    // Only the low byte counts, and only 1 shows: the mixed state is stored as true but hides the panel.
    const auto state = static_cast<quint8>(stateOf(sender));
    m_propertyDetailsShowing = state != 0;
    if (state == 1)
        showPropertyDetailsView();
    else
        hidePropertyDetailsView();
}

void KTVPlotixPlugIn::showPropertyDetailsView()
{
    TrendViewArrangement* parts = arrangement();
    parts->animateTo(plotix::framesAfterShowing(parts->currentFrames(), parts->height()),
                     TrendViewArrangement::Fade::In);
}

void KTVPlotixPlugIn::hidePropertyDetailsView()
{
    TrendViewArrangement* parts = arrangement();
    parts->animateTo(plotix::framesAfterHiding(parts->currentFrames(), parts->height()),
                     TrendViewArrangement::Fade::Out);
}

void KTVPlotixPlugIn::animationDidEnd(QObject* /*animation*/) {}
