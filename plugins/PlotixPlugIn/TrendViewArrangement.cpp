#include "plugins/PlotixPlugIn/TrendViewArrangement.h"

#include <QtCore/QPropertyAnimation>
#include <QtGui/QPainter>

using plotix::TrendViewFrames;

namespace {

QRect frameOf(const QWidget* part)
{
    return part ? part->geometry() : QRect(0, 0, 0, 0);
}

/// What a view looked like, with an opacity. Stands in for the panel while it fades: an effect on the panel itself
/// leaves what lies behind its opaque table unpainted.
class FadingImage : public QWidget {
public:
    FadingImage(QWidget* view, double opacity)
        : QWidget(view->parentWidget()), m_image(view->grab()), m_opacity(opacity)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(view->geometry());
        show();
    }
    void setOpacity(double opacity)
    {
        m_opacity = opacity;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setOpacity(m_opacity);
        painter.drawPixmap(0, 0, m_image);
    }

private:
    QPixmap m_image;
    double m_opacity;
};

void setFrame(QWidget* part, const QRect& frame)
{
    if (part)
        part->setGeometry(frame);
}

}  // namespace

TrendViewArrangement::TrendViewArrangement(Parts parts, const QSize& size, QObject* parent)
    : QObject(parent), m_parts(std::move(parts)), m_size(size), m_frames(currentFrames())
{
}

TrendViewFrames TrendViewArrangement::currentFrames()
{
    finishAnimation();
    return {frameOf(m_parts.panel), frameOf(m_parts.button), frameOf(m_parts.label),
            frameOf(m_parts.graph), frameOf(m_parts.dates),  frameOf(m_parts.sharing)};
}

void TrendViewArrangement::finishAnimation()
{
    if (m_animation)
        m_animation->setCurrentTime(m_animation->totalDuration());
}

void TrendViewArrangement::animateTo(const TrendViewFrames& frames, Fade fade)
{
    finishAnimation();
    m_frames = frames;
    auto* animation = new QParallelAnimationGroup(this);
    m_animation = animation;
    addFade(fade);
    addMove(m_parts.button, frames.button);
    addMove(m_parts.label, frames.label);
    addMove(m_parts.graph, frames.graph);
    connect(animation, &QAbstractAnimation::finished, this, [this, animation, fade] {
        if (m_animation == animation)
            m_animation = nullptr;
        endFade(fade);
        emit animationDidEnd(animation);
    });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void TrendViewArrangement::addFade(Fade fade)
{
    if (!m_parts.panel || !m_parts.panel->parentWidget())
        return;
    const double start = fade == Fade::In ? 0.0 : 1.0;
    auto* image = new FadingImage(m_parts.panel, start);
    m_fadingImage = image;
    m_parts.panel->hide();
    auto* opacity = new QVariantAnimation(m_animation);
    opacity->setDuration(kAnimationMilliseconds);
    opacity->setStartValue(start);
    opacity->setEndValue(1.0 - start);
    connect(opacity, &QVariantAnimation::valueChanged, image,
            [image](const QVariant& value) { image->setOpacity(value.toDouble()); });
}

void TrendViewArrangement::addMove(QWidget* part, const QRect& end)
{
    if (!part)
        return;
    auto* move = new QPropertyAnimation(part, "geometry", m_animation);
    move->setDuration(kAnimationMilliseconds);
    move->setEasingCurve(QEasingCurve::InOutQuad);
    move->setStartValue(part->geometry());
    move->setEndValue(end);
}

void TrendViewArrangement::endFade(Fade fade)
{
    delete m_fadingImage;
    if (m_parts.panel)
        m_parts.panel->setVisible(fade == Fade::In);
}

void TrendViewArrangement::followSize(const QSize& newSize)
{
    if (newSize == m_size)
        return;
    const QSize oldSize = m_size;
    const QRect oldPanel = m_frames.panel;
    m_size = newSize;
    m_frames = plotix::framesAfterResizing(m_frames, oldSize, newSize);
    if (m_animation)
        redirectAnimation(oldSize, oldPanel);
    else
        place(m_frames);
}

void TrendViewArrangement::setDatesHeight(int height)
{
    const int taller = height - m_frames.dates.height();
    if (taller == 0)
        return;
    m_frames.dates.setHeight(height);
    m_frames.graph.setTop(m_frames.graph.top() + taller);
    if (m_animation)
        moveGraphsTop(taller);
    else
        place(m_frames);
}

void TrendViewArrangement::moveGraphsTop(int distance)
{
    setFrame(m_parts.dates, m_frames.dates);
    for (int index = 0; index < m_animation->animationCount(); ++index) {
        auto* move = qobject_cast<QPropertyAnimation*>(m_animation->animationAt(index));
        if (!move || move->targetObject() != m_parts.graph)
            continue;
        move->setStartValue(move->startValue().toRect().adjusted(0, distance, 0, 0));
        move->setEndValue(move->endValue().toRect().adjusted(0, distance, 0, 0));
    }
}

void TrendViewArrangement::place(const TrendViewFrames& frames)
{
    setFrame(m_parts.panel, frames.panel);
    setFrame(m_parts.button, frames.button);
    setFrame(m_parts.label, frames.label);
    setFrame(m_parts.graph, frames.graph);
    setFrame(m_parts.dates, frames.dates);
    setFrame(m_parts.sharing, frames.sharing);
}

void TrendViewArrangement::redirectAnimation(const QSize& oldSize, const QRect& oldPanel)
{
    setFrame(m_parts.panel, m_frames.panel);
    setFrame(m_fadingImage, m_frames.panel);
    setFrame(m_parts.dates, m_frames.dates);
    setFrame(m_parts.sharing, m_frames.sharing);
    for (int index = 0; index < m_animation->animationCount(); ++index) {
        auto* move = qobject_cast<QPropertyAnimation*>(m_animation->animationAt(index));
        if (!move || move->propertyName() != "geometry")
            continue;
        const bool isGraph = move->targetObject() == m_parts.graph;
        const auto resized = [&](const QVariant& value) {
            TrendViewFrames frames{.panel = oldPanel};
            (isGraph ? frames.graph : frames.button) = value.toRect();  // button and label follow the same rule
            frames = plotix::framesAfterResizing(frames, oldSize, m_size);
            return isGraph ? frames.graph : frames.button;
        };
        move->setStartValue(resized(move->startValue()));
        move->setEndValue(resized(move->endValue()));
    }
}
