#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"
#include "tests/support/fakehost/FakeHost.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QUuid>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

#include <cmath>

using fakehost::FakeArchive;
using fakehost::FakeEncoder;
using fakehost::FakeHost;

namespace {

/// A plug-in as small as it gets, telling what happens to it.
class SmallPlugIn : public KTVPlugIn {
public:
    explicit SmallPlugIn(QStringList* told = nullptr) : m_told(told) {}

    bool start(KTVAgentPtr agent, KTVSiteWindowController* controller) { return initWithAgent(agent, controller); }
    bool start(KTVDecoder& decoder) { return initWithCoder(decoder); }
    void end() { unloadView(); }

protected:
    QWidget* loadView() override
    {
        tell(isViewLoaded() ? "loadView again" : "loadView");
        auto* root = new QWidget;
        root->setObjectName(QStringLiteral("root"));
        root->resize(120, 80);
        root->setStyleSheet(QStringLiteral("#root { background-color: #336699; }"));
        root->setAttribute(Qt::WA_StyledBackground);
        return root;
    }
    void viewDidLoad() override { tell(isViewLoaded() && view() ? "viewDidLoad" : "viewDidLoad too early"); }

private:
    void tell(const char* what)
    {
        if (m_told)
            m_told->append(QLatin1String(what));
    }

    QStringList* m_told;
};

class PlugInBaseTest : public testing::Test {
protected:
    std::shared_ptr<SmallPlugIn> made()
    {
        auto plugIn = std::make_shared<SmallPlugIn>(&told);
        EXPECT_TRUE(plugIn->start(host.agent(), &host.siteWindowController()));
        return plugIn;
    }
    FakeArchive archived(const KTVPlugIn& plugIn)
    {
        FakeArchive archive;
        FakeEncoder encoder(archive);
        plugIn.encodeWithCoder(encoder);
        return archive;
    }
    /// Null when the plug-in declines.
    std::shared_ptr<SmallPlugIn> decoded(const FakeArchive& archive)
    {
        auto plugIn = std::make_shared<SmallPlugIn>();
        auto decoder = host.decoder(archive);
        return plugIn->start(decoder) ? plugIn : nullptr;
    }

    FakeHost host;
    QStringList told;
};

TEST_F(PlugInBaseTest, KnowsItsAgentAndItsWindow)
{
    const auto plugIn = made();
    EXPECT_EQ(plugIn->agent(), host.agent());
    EXPECT_EQ(plugIn->siteWindowController(), &host.siteWindowController());
}

TEST_F(PlugInBaseTest, DeclinesWithoutAnAgent)
{
    SmallPlugIn plugIn;
    EXPECT_FALSE(plugIn.start(nullptr, &host.siteWindowController()));
}

TEST_F(PlugInBaseTest, DoesWithoutAWindow)
{
    SmallPlugIn plugIn;
    EXPECT_TRUE(plugIn.start(host.agent(), nullptr));
    EXPECT_EQ(plugIn.siteWindowController(), nullptr);
}

TEST_F(PlugInBaseTest, LoadsItsViewOnFirstUseAndOnce)
{
    const auto plugIn = made();
    EXPECT_FALSE(plugIn->isViewLoaded());
    EXPECT_TRUE(told.isEmpty());
    QWidget* const view = plugIn->view();
    EXPECT_EQ(plugIn->view(), view);
    EXPECT_EQ(told, (QStringList{"loadView", "viewDidLoad"}));
}

TEST_F(PlugInBaseTest, TakesItsViewAlongWhenItGoes)
{
    QPointer<QWidget> view = made()->view();
    EXPECT_TRUE(view.isNull());
}

TEST_F(PlugInBaseTest, OutlivesAWindowThatTookItsViewAsAChild)
{
    const auto plugIn = made();
    {
        QWidget window;
        plugIn->view()->setParent(&window);
    }
    EXPECT_EQ(plugIn->view(), nullptr);
    EXPECT_TRUE(plugIn->pngImageWithScale(1).isEmpty());
    EXPECT_TRUE(plugIn->pdfRepresentation().isEmpty());
}

TEST_F(PlugInBaseTest, LeavesAWindowThatTookItsViewAsAChild)
{
    QWidget window;
    auto plugIn = made();
    plugIn->view()->setParent(&window);
    plugIn.reset();
    EXPECT_TRUE(window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
}

TEST_F(PlugInBaseTest, AnUnloadedViewIsNotLoadedAgain)
{
    const auto plugIn = made();
    plugIn->view();
    plugIn->end();
    EXPECT_FALSE(plugIn->isViewLoaded());
    EXPECT_EQ(plugIn->view(), nullptr);
    EXPECT_EQ(told.count("loadView"), 1);
}

TEST_F(PlugInBaseTest, IsIdentifiedByAUuidOfItsOwn)
{
    const auto one = made(), other = made();
    EXPECT_FALSE(QUuid(one->uniqueIdentifier()).isNull());
    EXPECT_FALSE(one->uniqueIdentifier().contains(u'{'));
    EXPECT_NE(one->uniqueIdentifier(), other->uniqueIdentifier());
}

TEST_F(PlugInBaseTest, TellsAChangedTitleOnce)
{
    const auto plugIn = made();
    int changes = 0;
    QObject::connect(plugIn.get(), &KTVPlugIn::titleChanged, [&] { ++changes; });
    plugIn->setTitle(QStringLiteral("Meadow"));
    plugIn->setTitle(QStringLiteral("Meadow"));
    EXPECT_EQ(plugIn->title(), QStringLiteral("Meadow"));
    EXPECT_EQ(changes, 1);
}

TEST_F(PlugInBaseTest, ArchivesItsThreeKeysInOrder)
{
    const auto plugIn = made();
    const FakeArchive archive = archived(*plugIn);
    EXPECT_EQ(archive.keys(), (QStringList{"uniqueIdentifier", "title", "agent"}));
    EXPECT_EQ(archive.value("agent"), QVariant(host.agent()->uniqueIdentifier()));
}

TEST_F(PlugInBaseTest, ArchivingDoesNotLoadTheView)
{
    const auto plugIn = made();
    archived(*plugIn);
    EXPECT_FALSE(plugIn->isViewLoaded());
}

TEST_F(PlugInBaseTest, ComesBackFromItsArchive)
{
    const auto plugIn = made();
    plugIn->setTitle(QStringLiteral("Meadow"));
    const auto again = decoded(archived(*plugIn));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->uniqueIdentifier(), plugIn->uniqueIdentifier());
    EXPECT_EQ(again->title(), QStringLiteral("Meadow"));
    EXPECT_EQ(again->agent(), host.agent());
    EXPECT_EQ(again->siteWindowController(), &host.siteWindowController());
}

TEST_F(PlugInBaseTest, AnArchiveOfAnUnknownAgentIsDeclined)
{
    FakeArchive archive = archived(*made());
    archive.setValue("agent", "somebody else");
    EXPECT_EQ(decoded(archive), nullptr);
}

TEST_F(PlugInBaseTest, MissingKeysHaveFallbacks)
{
    const auto again = decoded(FakeArchive());
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->agent(), host.agent());
    EXPECT_FALSE(QUuid(again->uniqueIdentifier()).isNull());
    EXPECT_TRUE(again->title().isEmpty());
}

TEST_F(PlugInBaseTest, RendersItsViewAsPng)
{
    const QImage image = QImage::fromData(made()->pngImageWithScale(1), "PNG");
    EXPECT_EQ(image.size(), QSize(120, 80));
    EXPECT_EQ(image.pixelColor(60, 40), QColor("#336699"));
}

TEST_F(PlugInBaseTest, PngScaleIsPixelsAPoint)
{
    EXPECT_EQ(QImage::fromData(made()->pngImageWithScale(2), "PNG").size(), QSize(240, 160));
    EXPECT_EQ(QImage::fromData(made()->pngImageWithScale(0.5), "PNG").size(), QSize(60, 40));
}

TEST_F(PlugInBaseTest, APngScaleThatIsNotPositiveGivesNoData)
{
    EXPECT_TRUE(made()->pngImageWithScale(0).isEmpty());
    EXPECT_TRUE(made()->pngImageWithScale(-1).isEmpty());
    EXPECT_TRUE(made()->pngImageWithScale(std::nan("")).isEmpty());
}

TEST_F(PlugInBaseTest, RendersItsViewAsAPdfPageOfOnePointAPixel)
{
    const QByteArray data = made()->pdfRepresentation();
    EXPECT_TRUE(data.startsWith("%PDF-"));
    const QRegularExpression box("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]");
    const QRegularExpressionMatch match = box.match(QString::fromLatin1(data));
    ASSERT_TRUE(match.hasMatch());
    EXPECT_NEAR(match.captured(1).toDouble(), 120, 1);
    EXPECT_NEAR(match.captured(2).toDouble(), 80, 1);
}

TEST_F(PlugInBaseTest, ThePdfHoldsNoPicture)
{
    EXPECT_FALSE(made()->pdfRepresentation().contains("/Subtype /Image"));
}

TEST_F(PlugInBaseTest, DescribesItselfPlainly)
{
    const auto plugIn = made();
    EXPECT_EQ(plugIn->textDescription(), plugIn->name());
    EXPECT_FALSE(plugIn->htmlDescription() || plugIn->xmlDescription() || plugIn->jsonDescription());
    EXPECT_TRUE(plugIn->icon().isNull());
    EXPECT_FALSE(plugIn->group());
    EXPECT_EQ(plugIn->toolbarItem(), nullptr);
    EXPECT_FALSE(plugIn->isDeletable() || plugIn->isRenamable() || plugIn->isUndockable());
    EXPECT_TRUE(plugIn->dragType().isEmpty());
}

TEST_F(PlugInBaseTest, AnswersTheWebServerNothing)
{
    const auto plugIn = made();
    EXPECT_EQ(plugIn->webServiceAdvertisementForBaseURL("http://host"), std::nullopt);
    EXPECT_EQ(plugIn->webServiceResponseForRequest({QUrl("http://host/" + plugIn->uniqueIdentifier() + ".png")}),
              nullptr);
}

TEST_F(PlugInBaseTest, KnowsNoBundle)
{
    EXPECT_EQ(made()->bundleShortVersion(), std::nullopt);
}

TEST(WebServiceResponse, HoldsDataAndTheirType)
{
    const auto response = GCDWebServerDataResponse::responseWithData("bytes", "image/png");
    EXPECT_EQ(response->data(), "bytes");
    EXPECT_EQ(response->contentType(), "image/png");
}

}  // namespace
