#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include "plugins/PlotixPlugIn/host/PngImage.h"

#include <QtCore/QBuffer>
#include <QtCore/QMarginsF>
#include <QtCore/QUuid>
#include <QtGui/QPageSize>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

#include <algorithm>
#include <cmath>

namespace {

// Stored: never change.
const QString kUniqueIdentifierKey = QStringLiteral("uniqueIdentifier");
const QString kTitleKey = QStringLiteral("title");
const QString kAgentKey = QStringLiteral("agent");

// A view that was never shown has no size of its own yet.
void giveUsualSize(QWidget* view)
{
    if (!view->testAttribute(Qt::WA_Resized) && !view->parentWidget())
        view->adjustSize();
}

}  // namespace

KTVPlugIn::KTVPlugIn() : m_uniqueIdentifier(QUuid::createUuid().toString(QUuid::WithoutBraces)) {}

KTVPlugIn::~KTVPlugIn()
{
    unloadView();
}

bool KTVPlugIn::initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController)
{
    m_agent = std::move(agent);
    m_siteWindowController = siteWindowController;
    return m_agent != nullptr;
}

bool KTVPlugIn::initWithCoder(KTVDecoder& decoder)
{
    KTVSiteWindowController* controller = decoder.siteWindowController();
    KTVAgentPtr agent;
    if (decoder.containsKey(kAgentKey))
        agent = decoder.agentWithIdentifier(decoder.decodeValue(kAgentKey).toString());
    else if (controller)
        agent = controller->agent();  // a missing key is no failure: the window's agent is the likely one
    const QString identifier = decoder.decodeValue(kUniqueIdentifierKey).toString();
    if (!identifier.isEmpty())
        m_uniqueIdentifier = identifier;
    m_title = decoder.decodeValue(kTitleKey).toString();
    return initWithAgent(std::move(agent), controller);
}

void KTVPlugIn::encodeWithCoder(KTVEncoder& encoder) const
{
    encoder.encodeValue(kUniqueIdentifierKey, m_uniqueIdentifier);
    encoder.encodeValue(kTitleKey, m_title);
    encoder.encodeValue(kAgentKey, m_agent ? m_agent->uniqueIdentifier() : QString());
}

QWidget* KTVPlugIn::view()
{
    if (m_viewState == ViewState::NotLoaded) {
        m_view = loadView();
        m_viewState = ViewState::Loaded;
        viewDidLoad();
    }
    return m_view;
}

QWidget* KTVPlugIn::loadView()
{
    return new QWidget;
}

void KTVPlugIn::viewDidLoad() {}

void KTVPlugIn::unloadView()
{
    m_viewState = ViewState::Unloaded;
    delete m_view.data();
}

void KTVPlugIn::setTitle(const QString& title)
{
    if (title == m_title)
        return;
    m_title = title;
    emit titleChanged();
}

QByteArray KTVPlugIn::pngImageWithScale(double scale)
{
    QWidget* root = view();
    if (!root)
        return {};
    giveUsualSize(root);
    return pngOfImage(imageRepresentation(root, scale));
}

QByteArray KTVPlugIn::pdfRepresentation()
{
    QWidget* root = view();
    if (!root)
        return {};
    giveUsualSize(root);
    if (root->size().isEmpty())
        return {};
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(m_title.isEmpty() ? name() : m_title);
    // The view's own dots per inch keep its text at the size it has on screen; one pixel becomes one point.
    const int dotsPerInch = root->logicalDpiX();
    writer.setResolution(dotsPerInch);
    writer.setPageSize(QPageSize(QSizeF(root->size()), QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QPainter painter(&writer);
    painter.scale(dotsPerInch / 72.0, dotsPerInch / 72.0);
    root->render(&painter, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    painter.end();
    return data;
}

KTVPrintInfo* KTVPlugIn::customPrintInfo()
{
    return KTVPrintInfo::sharedPrintInfo();
}

std::optional<QString> KTVPlugIn::htmlContentForPrinting()
{
    return std::nullopt;
}

std::optional<QString> KTVPlugIn::webServiceAdvertisementForBaseURL(const QString& /*baseURL*/)
{
    return std::nullopt;
}

GCDWebServerDataResponsePtr KTVPlugIn::webServiceResponseForRequest(const KTVWebServiceRequest& /*request*/)
{
    return nullptr;
}

void KTVPlugIn::didLoad() {}
void KTVPlugIn::willUnload() {}
QString KTVPlugIn::bundleIdentifier() const
{
    return {};
}
int KTVPlugIn::bundleVersion() const
{
    return 0;
}
std::optional<QString> KTVPlugIn::bundleShortVersion() const
{
    return std::nullopt;
}
QString KTVPlugIn::name() const
{
    return QString::fromLatin1(metaObject()->className());
}
QString KTVPlugIn::textDescription() const
{
    return name();
}
std::optional<QString> KTVPlugIn::htmlDescription() const
{
    return std::nullopt;
}
std::optional<QString> KTVPlugIn::xmlDescription() const
{
    return std::nullopt;
}
std::optional<QString> KTVPlugIn::jsonDescription() const
{
    return std::nullopt;
}
QIcon KTVPlugIn::icon() const
{
    return {};
}
std::optional<QString> KTVPlugIn::group() const
{
    return std::nullopt;
}
QAction* KTVPlugIn::toolbarItem()
{
    return nullptr;
}
bool KTVPlugIn::isDeletable() const
{
    return false;
}
bool KTVPlugIn::isRenamable() const
{
    return false;
}
bool KTVPlugIn::isUndockable() const
{
    return false;
}
QString KTVPlugIn::dragType() const
{
    return {};
}

QImage imageRepresentation(QWidget* view, double scale)
{
    if (!view || view->size().isEmpty() || !(scale > 0) || !std::isfinite(scale))
        return {};
    const QSize pixels = (QSizeF(view->size()) * scale).toSize().expandedTo(QSize(1, 1));
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    view->render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    return image;
}

QImage imageByScalingProportionallyToSize(const QImage& image, const QSizeF& size)
{
    if (image.isNull() || !(size.width() > 0) || !(size.height() > 0))
        return {};
    const double factor = std::min(size.width() / image.width(), size.height() / image.height());
    // Rounded here: the toolkit's own scaling with the aspect ratio kept cuts fractions off.
    const QSize sides = (QSizeF(image.size()) * factor).toSize().expandedTo(QSize(1, 1));
    QImage scaled = image.scaled(sides, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(1);
    return scaled;
}
