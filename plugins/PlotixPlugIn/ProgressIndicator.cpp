#include "plugins/PlotixPlugIn/ProgressIndicator.h"

#include <QtCore/QTimerEvent>
#include <QtGui/QPainter>

namespace {
constexpr int kSpokes = 12;
constexpr int kStepMilliseconds = 80;
}  // namespace

ProgressIndicator::ProgressIndicator(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(tr("Fetching records"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ProgressIndicator::startAnimation()
{
    if (m_animating)
        return;
    m_animating = true;
    turnWhileNeeded();
    emit animatingChanged(true);
}

void ProgressIndicator::stopAnimation()
{
    if (!m_animating)
        return;
    m_animating = false;
    turnWhileNeeded();
    emit animatingChanged(false);
}

void ProgressIndicator::turnWhileNeeded()
{
    if (m_animating && isVisible())
        m_timer.start(kStepMilliseconds, this);
    else
        m_timer.stop();
}

void ProgressIndicator::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = std::min(width(), height()) / 2.0 - 1.0;
    painter.translate(rect().toRectF().center());
    QColor color = palette().color(QPalette::WindowText);
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        const int age = (m_step - spoke + kSpokes) % kSpokes;  // 0: the head of the wheel
        color.setAlphaF(1.0F - 0.85F * static_cast<float>(age) / (kSpokes - 1));
        painter.setPen(QPen(color, radius * 0.2, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(spoke * 360.0 / kSpokes);
        painter.drawLine(QPointF(0, -radius * 0.55), QPointF(0, -radius));
        painter.restore();
    }
}

void ProgressIndicator::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_step = (m_step + 1) % kSpokes;
    update();
}

void ProgressIndicator::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    turnWhileNeeded();
}

void ProgressIndicator::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    turnWhileNeeded();
}
