#include "hostapp/site/SpanReader.h"

#include "hostapp/site/PlugInOperations.h"

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

namespace plotix {

SpanReader::SpanReader(std::chrono::milliseconds rest, IsMoving isMoving)
    : m_rest(rest),
      m_isMoving(isMoving ? std::move(isMoving) : [] { return QGuiApplication::mouseButtons() != Qt::NoButton; })
{
}

void SpanReader::lookAfter(const KTVPlugInPtr& plugIn)
{
    QObject* reading = readSpansOf(plugIn.get());
    if (!reading || reading->metaObject()->indexOfSignal("spanMoved()") < 0 || spansTold(plugIn.get()).isEmpty())
        return;
    auto* timer = new QTimer(reading);
    timer->setSingleShot(true);
    timer->setInterval(m_rest);
    connect(reading, SIGNAL(spanMoved()), timer, SLOT(start()));
    connect(timer, &QTimer::timeout, this,
            [this, timer, weak = std::weak_ptr(plugIn), lastAsked = std::optional<MomentSpan>()]() mutable {
                const KTVPlugInPtr trend = weak.lock();
                if (trend && m_isMoving())
                    timer->start();
                else if (trend)
                    readWhatIsMissing(*trend, lastAsked);
            });
}

void SpanReader::readWhatIsMissing(KTVPlugIn& plugIn, std::optional<MomentSpan>& lastAsked)
{
    const std::optional<TrendSpans> spans = spansOf(&plugIn);
    // While what is read already is read again, the answers might come in the wrong order; this is told once more then.
    const bool isReadAgain = spans && spans->asked && spans->read && isSameSpan(*spans->asked, *spans->read);
    if (!spans || spans->datesEdited || isReadAgain)
        return;
    const TrendNeed need = needOf(*spans, Wanted::Covered);
    const bool isFetch = need == TrendNeed::Show || need == TrendNeed::Read;
    if (isFetch && lastAsked && isSameSpan(*lastAsked, spans->dates))
        return;
    if (isFetch || need == TrendNeed::Nothing)
        lastAsked = isFetch ? std::optional(spans->dates) : std::nullopt;
    meet(need, plugIn, *spans);
}

}  // namespace plotix
