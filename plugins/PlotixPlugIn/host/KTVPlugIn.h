#pragma once

#include "plugins/PlotixPlugIn/host/KTVAgent.h"
#include "plugins/PlotixPlugIn/host/KTVCoder.h"
#include "plugins/PlotixPlugIn/host/KTVPrintInfo.h"
#include "plugins/PlotixPlugIn/host/KTVSiteWindowController.h"
#include "plugins/PlotixPlugIn/host/KTVWebService.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtGui/QAction>
#include <QtGui/QIcon>

#include <memory>
#include <optional>

/// Base of every plug-in: a view controller with a root view, archived into the site document.
///
/// Always held by shared_ptr: the host *shares* it; it *shares* its agent and *borrows* the site window controller,
/// which outlives it. The root view is *owned* by the plug-in unless a window has taken it as a child; view and plug-in
/// may go in either order. Main thread only, except the two web-service hooks.
class KTVHOST_EXPORT KTVPlugIn : public QObject, public std::enable_shared_from_this<KTVPlugIn> {
    Q_OBJECT
public:
    ~KTVPlugIn() override;

    const KTVAgentPtr& agent() const { return m_agent; }
    KTVSiteWindowController* siteWindowController() const { return m_siteWindowController; }

    /// The root view; loads it on first use (`loadView`, then `viewDidLoad`). Loaded once only: null after a parent has
    /// deleted it, or after `unloadView`.
    QWidget* view();
    bool isViewLoaded() const { return m_viewState == ViewState::Loaded; }

    /// Lifecycle notices of the host; the base does nothing.
    virtual void didLoad();
    virtual void willUnload();

    /// A UUID, archived.
    QString uniqueIdentifier() const { return m_uniqueIdentifier; }

    /// Shown in the source list; archived. A plug-in without one shows its `name`.
    QString title() const { return m_title; }
    void setTitle(const QString& title);

    /// Writes the base's keys: "uniqueIdentifier", "title", "agent". Subclasses call the base first. Stored: never
    /// change.
    virtual void encodeWithCoder(KTVEncoder& encoder) const;

    /// Pictures of the whole view, which is loaded for it. Scale 1 is one pixel a point; a scale that is not positive,
    /// or a view without extent, gives no data. The PDF holds vectors, one point a pixel.
    virtual QByteArray pngImageWithScale(double scale);
    virtual QByteArray pdfRepresentation();

    /// What the host prints: the page setup, then the report as HTML. The base leaves the shared settings as they are
    /// and has nothing to print. Page headers and footers: a plug-in that is a KTVWebUIDelegate draws them.
    virtual KTVPrintInfo* customPrintInfo();
    virtual std::optional<QString> htmlContentForPrinting();

    /// What the host's web server asks; the base answers nothing. The advertisement is a fragment of HTML whose links
    /// begin with the base URL's text, unchanged; any thread. The response may wait for the main queue, so ask for it
    /// on a thread of the server, never on the main thread. The caller *shares* the plug-in meanwhile and releases it
    /// on the main thread; the site window controller lives until every call has returned.
    virtual std::optional<QString> webServiceAdvertisementForBaseURL(const QString& baseURL);
    virtual GCDWebServerDataResponsePtr webServiceResponseForRequest(const KTVWebServiceRequest& request);

    /// The bundle that holds the plug-in's class; the base answers an empty text.
    virtual QString bundleIdentifier() const;
    virtual int bundleVersion() const;
    virtual std::optional<QString> bundleShortVersion() const;  ///< for people, such as "1.0"

    virtual QString name() const;
    virtual QString textDescription() const;
    virtual std::optional<QString> htmlDescription() const;
    virtual std::optional<QString> xmlDescription() const;
    virtual std::optional<QString> jsonDescription() const;
    virtual QIcon icon() const;
    virtual std::optional<QString> group() const;
    virtual QAction* toolbarItem();  ///< a new one on every call, owned by the caller; null for none
    virtual bool isDeletable() const;
    virtual bool isRenamable() const;
    virtual bool isUndockable() const;
    virtual QString dragType() const;

signals:
    void titleChanged();

protected:
    KTVPlugIn();

    /// Both answer false, and leave the object unusable, when there is no agent. An archive without the key "agent"
    /// belongs to the window's agent; without "uniqueIdentifier" the new one stays.
    bool initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController);
    bool initWithCoder(KTVDecoder& decoder);

    /// Makes the root view, without parent; the base makes an empty one.
    virtual QWidget* loadView();

    /// Sent once, when the root view and its outlets exist.
    virtual void viewDidLoad();

    /// Deletes the root view, also out of a window that took it; for subclasses that must tear it down before the base
    /// does.
    void unloadView();

private:
    KTVAgentPtr m_agent;
    KTVSiteWindowController* m_siteWindowController = nullptr;
    QPointer<QWidget> m_view;
    enum class ViewState { NotLoaded, Loaded, Unloaded };
    ViewState m_viewState = ViewState::NotLoaded;
    QString m_uniqueIdentifier;
    QString m_title;
};

using KTVPlugInPtr = std::shared_ptr<KTVPlugIn>;

/// What a view looks like with its subviews; loads nothing, shows nothing. A null view, one without extent, or a scale
/// that is not positive answers a null image. Its device pixel ratio is the scale.
KTVHOST_EXPORT QImage imageRepresentation(QWidget* view, double scale = 1.0);

/// Scales to fit inside `size` with the aspect ratio kept, enlarging too; sides are rounded to whole pixels, at
/// least 1. A null image, or a size that is not positive, answers a null image.
KTVHOST_EXPORT QImage imageByScalingProportionallyToSize(const QImage& image, const QSizeF& size);
