#include "hostapp/core/HostBundle.h"
#include "hostapp/core/Localization.h"
#include "tests/plugins/PlotixPlugIn/DateRangeControllerFixture.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QMenu>

namespace {

/// The date panel with the program's own bundle, speaking German.
class GermanDatePanelTest : public DateRangeControllerTest {
protected:
    GermanDatePanelTest()
    {
        QCoreApplication::installTranslator(texts.get());
        KTVHostServices services;
        services.mainBundle = &german;
        services.dateCreator = &dateCreator;
        KTVHostServices::install(services);
        makeController();
    }

    const std::unique_ptr<QTranslator> texts = plotix::textsOf(QStringLiteral("de"));
    plotix::HostBundle german;
};

TEST_F(GermanDatePanelTest, SpeaksGerman)
{
    EXPECT_EQ(controller->fromTextField()->text(), QStringLiteral("Von"));
    EXPECT_EQ(controller->refreshButton()->text(), QStringLiteral("Aktualisieren"));
    EXPECT_EQ(controller->quickDatePopupButton()->menu()->actions().first()->text(), QStringLiteral("Heute"));
    EXPECT_EQ(controller->fromDate()->accessibleName(), QStringLiteral("Von-Datum"));
}

TEST_F(GermanDatePanelTest, ReturnRefreshesWhileAFetchRuns)
{
    controller->refreshStarted(nullptr);
    EXPECT_EQ(controller->refreshButton()->text(), QStringLiteral("Abbrechen"));
    controller->returnKeyPressed(nullptr);  // compares with the English word, which the button does not say
    EXPECT_EQ(delegate.calls, QStringList{"refresh"});
}

TEST_F(GermanDatePanelTest, ButtonItselfCancelsWhileAFetchRuns)
{
    controller->refreshStarted(nullptr);
    controller->refreshButton()->click();
    EXPECT_EQ(delegate.calls, QStringList{"cancel"});
    EXPECT_EQ(controller->refreshButton()->text(), QStringLiteral("Aktualisieren"));
}

}  // namespace
