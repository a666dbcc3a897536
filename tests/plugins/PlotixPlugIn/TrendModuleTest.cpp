#include "ImageReceiver.h"
#include "TrendViewFixture.h"

#include "plugins/PlotixPlugIn/host/KTVPlugInModule.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPluginLoader>

namespace {

/// The module as a host finds it: loaded at run time, its classes and operations reached by name.
class TrendModule : public TrendViewFixture {
protected:
    TrendModule() : m_loader(QCoreApplication::applicationDirPath() + QStringLiteral("/plugins/PlotixPlugIn.so")) {}

    KTVPlugInModule& module()
    {
        auto* found = qobject_cast<KTVPlugInModule*>(m_loader.instance());
        if (!found)
            throw std::runtime_error(m_loader.errorString().toStdString());
        return *found;
    }
    KTVPlugInPtr makeByName(const QString& className)
    {
        KTVPlugInModule::Arguments arguments;
        arguments.agent = agent();
        arguments.siteWindowController = &host().siteWindowController();
        arguments.tables = KTVPropertyList{property("pressure")};
        arguments.fromDate = plotix::Date{kFrom};
        arguments.toDate = plotix::Date{kTo};
        return module().instantiate(className, arguments);
    }
    bool askForImage(const QVariant& names)
    {
        return QMetaObject::invokeMethod(module().classObject("KTVPlotixPlugIn"), "graph", Qt::DirectConnection,
                                         Q_ARG(KTVAgentPtr, agent()), Q_ARG(plotix::OptionalDate, plotix::Date{kFrom}),
                                         Q_ARG(plotix::OptionalDate, plotix::Date{kTo}), Q_ARG(QVariant, names),
                                         Q_ARG(QString, "Weather"), Q_ARG(QSizeF, QSizeF(320, 160)),
                                         Q_ARG(QObject*, &m_receiver), Q_ARG(QByteArray, "receiveImage"));
    }

    ImageReceiver m_receiver;

private:
    QPluginLoader m_loader;
};

TEST_F(TrendModule, OffersItsClassesUnderTheHostsInterfaceVersion)
{
    EXPECT_EQ(module().interfaceVersion(), kPlugInInterfaceVersion);
    EXPECT_EQ(module().classNames(), QStringList({"KTVPlotixPlugIn", "KTVPlotixToolbarPlugIn"}));
}

TEST_F(TrendModule, MakesATrendViewByName)
{
    const KTVPlugInPtr plugIn = makeByName("KTVPlotixPlugIn");
    ASSERT_NE(plugIn, nullptr);
    EXPECT_EQ(plugIn->name(), "Plotix");
    plugIn->view();
    EXPECT_EQ(lastFetch().properties, KTVPropertyList{property("pressure")});
}

TEST_F(TrendModule, MakesAndDecodesAToolbarPlugInByName)
{
    const KTVPlugInPtr plugIn = makeByName("KTVPlotixToolbarPlugIn");
    ASSERT_NE(plugIn, nullptr);
    EXPECT_NE(std::unique_ptr<QAction>(plugIn->toolbarItem()), nullptr);
    fakehost::FakeArchive archive;
    fakehost::FakeEncoder encoder(archive);
    plugIn->encodeWithCoder(encoder);
    fakehost::FakeDecoder decoder = host().decoder(archive);
    const KTVPlugInPtr again = module().instantiate("KTVPlotixToolbarPlugIn", decoder);
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->uniqueIdentifier(), plugIn->uniqueIdentifier());
}

TEST_F(TrendModule, ToolbarPlugInHasNoClassOperations)
{
    EXPECT_EQ(module().classObject("KTVPlotixToolbarPlugIn"), nullptr);
}

TEST_F(TrendModule, UnknownNamesMakeNothing)
{
    EXPECT_EQ(makeByName("KTVSomethingElse"), nullptr);
    EXPECT_EQ(module().classObject("KTVSomethingElse"), nullptr);
}

TEST_F(TrendModule, DecodesByName)
{
    fakehost::FakeArchive archive;
    fakehost::FakeDecoder decoder = host().decoder(archive);
    EXPECT_NE(module().instantiate("KTVPlotixPlugIn", decoder), nullptr);
    EXPECT_EQ(module().instantiate("KTVSomethingElse", decoder), nullptr);
}

TEST_F(TrendModule, RendersOffScreenByName)
{
    ASSERT_TRUE(askForImage(QStringList{"pressure"}));
    answer(twoProperties());
    ASSERT_EQ(m_receiver.images.size(), 1U);
    EXPECT_EQ(QImage::fromData(m_receiver.images[0]).size(), QSize(320, 160));
}

TEST_F(TrendModule, InvalidListOfNamesIsAnAbsentOne)
{
    ASSERT_TRUE(askForImage(QVariant()));
    EXPECT_EQ(fetchCount(), 0);
}

class TrendActions : public TrendModule, public testing::WithParamInterface<const char*> {};

TEST_P(TrendActions, IsReachedByName)
{
    const KTVPlugInPtr plugIn = makeByName("KTVPlotixPlugIn");
    EXPECT_TRUE(QMetaObject::invokeMethod(plugIn.get(), GetParam(), Qt::DirectConnection, Q_ARG(QObject*, nullptr)));
}

INSTANTIATE_TEST_SUITE_P(Names, TrendActions,
                         testing::Values("exportToPNG", "exportToPDF", "refresh", "sharingButtonClicked",
                                         "helpButtonAction", "fitAll"));

TEST_F(TrendModule, HostsRenderingIsReachedByName)
{
    const KTVPlugInPtr plugIn = makeByName("KTVPlotixPlugIn");
    plugIn->view();
    answer(twoProperties());
    QImage image;
    QByteArray pdf;
    EXPECT_TRUE(QMetaObject::invokeMethod(plugIn.get(), "graphImageWithSize", Q_RETURN_ARG(QImage, image),
                                          Q_ARG(QSizeF, QSizeF(200, 100)), Q_ARG(double, 2.0), Q_ARG(QString, "")));
    EXPECT_TRUE(QMetaObject::invokeMethod(plugIn.get(), "graphPDFWithSize", Q_RETURN_ARG(QByteArray, pdf),
                                          Q_ARG(QSizeF, QSizeF(200, 100)), Q_ARG(QString, "")));
    EXPECT_EQ(image.size(), QSize(400, 200));
    EXPECT_TRUE(pdf.startsWith("%PDF"));
}

}  // namespace
