#include "hostapp/window/SiteWindow.h"

#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "plugins/PlotixPlugIn/host/KTVWebUIDelegate.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtPrintSupport/QPrintPreviewDialog>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

using plotix::Date;
using plotix::SiteWindow;

namespace {

/// A view with a one-line report; counts how often it was written.
class ReportingTrend : public KTVPlugIn, public KTVWebUIDelegate {
public:
    static std::shared_ptr<ReportingTrend> make(const KTVPlugInModule::Arguments& arguments)
    {
        std::shared_ptr<ReportingTrend> trend(new ReportingTrend);
        return trend->initWithAgent(arguments.agent, arguments.siteWindowController) ? trend : nullptr;
    }
    std::optional<QString> htmlContentForPrinting() override
    {
        ++reports;
        return QStringLiteral("<html><body><h1>Report</h1></body></html>");
    }
    float webViewHeaderHeight(QObject*) override { return 48; }
    float webViewFooterHeight(QObject*) override { return 24; }
    void webViewDrawHeaderInRect(QObject*, const QRectF&) override {}
    void webViewDrawFooterInRect(QObject*, const QRectF&) override {}

    int reports = 0;

protected:
    ReportingTrend() = default;
};

/// What a trend's reading tells: chosen dates that the graph does not show yet.
class BehindReading : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE QVariantMap spans() const
    {
        return {{QStringLiteral("drawn"), drawn}, {QStringLiteral("read"), drawn}, {QStringLiteral("datesLead"), true}};
    }
    QVariantList drawn{0.0, 10.0};
};

/// A reporting view whose graph is behind its dates until it is told to show them.
class BehindTrend : public ReportingTrend {
    Q_OBJECT
public:
    static std::shared_ptr<BehindTrend> make(const KTVPlugInModule::Arguments& arguments)
    {
        std::shared_ptr<BehindTrend> trend(new BehindTrend);
        return trend->initWithAgent(arguments.agent, arguments.siteWindowController) ? trend : nullptr;
    }
    std::optional<QString> htmlContentForPrinting() override
    {
        drawnInReport = state.drawn;
        return ReportingTrend::htmlContentForPrinting();
    }
    Q_INVOKABLE QVariantList shownRange() const { return dates; }
    Q_INVOKABLE void showRange(double from, double to) { state.drawn = {from, to}; }
    Q_INVOKABLE QObject* readSpans() { return &state; }

    QVariantList dates{100.0, 200.0}, drawnInReport;
    BehindReading state;
};

/// Answers the save panel at once.
class AnsweringDesktop : public plotix::DesktopUserInterface {
public:
    std::optional<QString> askWhereToSave(const QStringList&, const QString& title) override
    {
        proposed = title;
        return path;
    }
    std::optional<QString> path;
    QString proposed;
};

class PrintActionsTest : public testing::Test {
protected:
    void openWindow(KTVPlugInModule& module)
    {
        site.addStation();
        plotix::WindowServices services;
        services.module = &module;
        services.userInterface = &desktop;
        services.helpManager = &help;
        window = std::make_unique<SiteWindow>(site.document, services);
        trend = window->controller().newTrend(site.document->agents()[0], {}, Date{0}, Date{10}, QStringLiteral("Day"));
    }
    ReportingTrend& reporting() { return dynamic_cast<ReportingTrend&>(*trend); }

    ScratchSite site;
    StubModule stubs;
    ModuleOf<ReportingTrend> reports;
    ModuleOf<BehindTrend> behind;
    AnsweringDesktop desktop;
    plotix::HelpManager help;
    std::unique_ptr<SiteWindow> window;
    KTVPlugInPtr trend;

    void TearDown() override
    {
        trend.reset();
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(PrintActionsTest, AViewWithoutAReportGreysThemWithTheReason)
{
    openWindow(stubs);
    for (const QAction* action : {window->actions().print, window->actions().exportReport}) {
        EXPECT_FALSE(action->isEnabled());
        EXPECT_EQ(action->toolTip(), "This view has no report.");
    }
}

TEST_F(PrintActionsTest, TheReportIsSavedWhereAsked)
{
    openWindow(reports);
    desktop.path = site.file(QStringLiteral("report.pdf"));
    window->actions().exportReport->trigger();
    QFile file(*desktop.path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("%PDF"));
}

TEST_F(PrintActionsTest, AReportShowsTheDatesItStates)
{
    openWindow(behind);
    desktop.path = site.file(QStringLiteral("report.pdf"));
    window->actions().exportReport->trigger();
    auto& view = dynamic_cast<BehindTrend&>(*trend);
    EXPECT_EQ(view.reports, 1);
    EXPECT_EQ(view.drawnInReport, view.dates);
}

TEST_F(PrintActionsTest, AReportOfReversedDatesIsRefusedWithTheReason)
{
    openWindow(behind);
    dynamic_cast<BehindTrend&>(*trend).dates = {200.0, 100.0};
    desktop.path = site.file(QStringLiteral("report.pdf"));
    window->actions().exportReport->trigger();
    EXPECT_EQ(dynamic_cast<BehindTrend&>(*trend).reports, 0);
    const auto boxes = window->findChildren<QMessageBox*>();
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "The records of these dates are not here");
    EXPECT_FALSE(QFile::exists(*desktop.path));
}

TEST_F(PrintActionsTest, ACancelledSavePanelWritesNoReport)
{
    openWindow(reports);
    window->actions().exportReport->trigger();
    EXPECT_EQ(reporting().reports, 0);
}

TEST_F(PrintActionsTest, AReportThatCannotBeSavedIsTold)
{
    openWindow(reports);
    desktop.path = QStringLiteral("/nowhere/report.pdf");
    window->actions().exportReport->trigger();
    const auto boxes = window->findChildren<QMessageBox*>();
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0]->text(), "The report could not be saved");
}

TEST_F(PrintActionsTest, PrintingBeginsWithAPreview)
{
    openWindow(reports);
    window->show();
    int previews = 0;
    QTimer closer;
    closer.callOnTimeout([&] {
        if (auto* preview = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget())) {
            ++previews;
            closer.stop();
            preview->reject();
        }
    });
    closer.start(0);
    window->actions().print->trigger();
    EXPECT_EQ(previews, 1);
    EXPECT_GE(reporting().reports, 1);
}

}  // namespace

#include "PrintActionsTest.moc"
