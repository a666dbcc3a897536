#include "hostapp/site/RangedPicture.h"

#include "base/MainQueue.h"
#include "base/ReportableError.h"
#include "hostapp/document/ArchiveManager.h"
#include "hostapp/site/TrendPicture.h"
#include "plugins/PlotixPlugIn/host/KTVPlugInViews.h"

namespace plotix {

/// Told when a trend has shown everything it asked for. Main thread only; it keeps the trend as long as it waits.
class RangedPicture::Shown : public std::enable_shared_from_this<Shown> {
public:
    explicit Shown(KTVPlugInPtr trend) : m_trend(std::move(trend)) {}

    std::future<void> waitFor(const SiteAgent& agent)
    {
        // Behind what the answer has posted: the queue is serial.
        m_connection = QObject::connect(agent.siteArchiveManager(), &ArchiveManager::fetchAnswered,
                                        [self = shared_from_this()] { self->lookSoon(); });
        lookSoon();
        return m_isShown.get_future();
    }

private:
    void lookSoon()
    {
        MainQueue::main().async([self = shared_from_this()] { self->look(); });
    }
    void look()
    {
        const std::optional<TrendSpans> spans = m_trend ? spansOf(m_trend.get()) : std::nullopt;
        if (!m_trend || (spans && spans->asked))
            return;
        m_trend.reset();
        QObject::disconnect(m_connection);  // which lets go of this
        m_isShown.set_value();
    }

    KTVPlugInPtr m_trend;
    QMetaObject::Connection m_connection;
    std::promise<void> m_isShown;
};

RangedPicture::RangedPicture(const WorkingSite& site, const KTVPlugInPtr& trend, const MomentSpan& span)
{
    MainQueue::main().sync([&] {
        m_copy = site.copyOf(*trend, span);
        const auto agent = m_copy && m_copy->agent()
                               ? site.siteDocument()->agentWithIdentifier(m_copy->agent()->uniqueIdentifier())
                               : nullptr;
        if (!agent)
            return;
        loadViewAtSize(*m_copy, kUsualGraphSize);  // which begins to read
        m_shown = std::make_shared<Shown>(m_copy)->waitFor(*agent);
    });
}

RangedPicture::~RangedPicture()
{
    MainQueue::main().async([copy = std::move(m_copy)] {
        if (copy)
            copy->willUnload();
    });
}

QByteArray RangedPicture::made(FileKind format)
{
    if (!m_shown.valid())
        return {};
    m_shown.wait();
    QByteArray picture;
    MainQueue::main().sync([&] {
        try {
            picture = pictureTelling(
                m_copy, {.format = format, .size = QSizeF(kUsualGraphSize), .density = 1, .title = titleOf(*m_copy)});
        } catch (const ReportableError&) {  // then there is none
        }
    });
    return picture;
}

}  // namespace plotix
