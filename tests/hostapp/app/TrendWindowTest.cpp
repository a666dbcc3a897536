#include "hostapp/app/Composition.h"
#include "hostapp/exchange/formats/FileExchange.h"
#include "hostapp/site/ModuleNames.h"
#include "hostapp/site/PlugInOperations.h"
#include "hostapp/window/PropertyListModel.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtCore/QSettings>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QDropEvent>
#include <QtGui/QTextDocument>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTableView>

#include <cmath>
#include <set>

// A site window with the real module: what a person does to a trend in it, from the keys to the file.

namespace plotix {

namespace {

constexpr double kStart = 1'700'000'000;
constexpr int kMinutes = 600;

class TrendWindowTest : public testing::Test {
protected:
    TrendWindowTest() : composition(Composition::Audience::Desktop), station(site.addStation())
    {
        QSettings().clear();
        wind = station->addProperty("Wind <b>Gusts</b> & more", "m/s");
        storeRecords();
        window = std::make_unique<SiteWindow>(
            site.document,
            WindowServices{composition.module(), &composition.userInterface(), &composition.helpManager(), nullptr});
        window->resize(1200, 800);
        window->show();
        window->activateWindow();
        openTrend({property(0), property(1)});
    }
    void TearDown() override
    {
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::shared_ptr<SiteProperty> property(std::size_t position) const { return station->siteProperties()[position]; }

    void storeRecords()
    {
        std::vector<double> times;
        for (int minute = 0; minute < kMinutes; ++minute)
            times.push_back(kStart + minute * 60.0);
        RecordBlock block;
        block.times = SharedArray<double>::fromVector(std::move(times));
        for (const auto& each : station->siteProperties()) {
            std::vector<double> values;
            for (int minute = 0; minute < kMinutes; ++minute)
                values.push_back(std::sin(minute * 0.01) * 10 + static_cast<double>(each->description().id) / 3);
            block.columns.push_back({each->description().id, SharedArray<double>::fromVector(std::move(values)), {}});
        }
        const auto writer = site.document->records()->begin();
        writer->store(station->id(), block);
        writer->commit();
    }
    void openTrend(const KTVPropertyList& properties)
    {
        trend = window->controller().newTrend(station, properties, Date{kStart}, Date{kStart + kMinutes * 60}, "Day");
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        ASSERT_TRUE(QTest::qWaitFor([&] { return table().model()->rowCount() == int(properties.size()); }));
        QTest::qWait(500);  // what belongs to the beginning has come to rest
    }
    QTableView& table() { return *trend->view()->findChild<QTableView*>("infoTable"); }
    QCheckBox& checkBox(int row) { return *table().findChildren<QCheckBox*>().at(row); }
    QStringList shown() { return shownKeys(trend.get()); }

    /// Answers dialogs as they come: this one next, once.
    template <class Dialog, class Answer>
    void answer(Answer given)
    {
        auto* poll = new QTimer(window.get());
        QObject::connect(poll, &QTimer::timeout, window.get(), [poll, given] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible() ||
                (!std::is_same_v<Dialog, QFileDialog> && dialog->inherits("QFileDialog")))
                return;
            poll->stop();
            poll->deleteLater();
            given(dialog);
        });
        poll->start(10);
    }
    void saveAs(const QString& path)
    {
        answer<QFileDialog>([this, path](QFileDialog* panel) {
            proposed = panel->findChild<QLineEdit*>()->text();
            panel->findChild<QLineEdit*>()->setText(path);
            static_cast<QDialog*>(panel)->accept();
        });
    }
    /// From the property list onto the graph.
    void dropWind()
    {
        auto* target = trend->view()->findChild<QWidget*>("dragDropView");
        const PropertyListModel& list = window->propertyList();
        const std::unique_ptr<QMimeData> data(list.mimeData({list.index(2, 0, list.index(0, 0))}));
        QDragEnterEvent enter(QPoint(40, 40), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(target, &enter);
        QDropEvent drop(QPointF(40, 40), Qt::CopyAction, data.get(), Qt::LeftButton, {});
        QApplication::sendEvent(target, &drop);
        ASSERT_TRUE(QTest::qWaitFor([&] { return table().model()->rowCount() == 3; }));
    }
    void undoOnceItRested()
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->undoStack().undoText() == "Hide or Show Lines"; }))
            << window->undoStack().undoText().toStdString();
        window->actions().undo->trigger();
        QCoreApplication::processEvents();  // posted, so that the keys of Undo do not count over the graph
    }

    ScratchSite site;
    Composition composition;
    std::shared_ptr<SiteAgent> station;
    std::shared_ptr<SiteProperty> wind;
    std::unique_ptr<SiteWindow> window;
    KTVPlugInPtr trend;
    QString proposed;
};

TEST_F(TrendWindowTest, CopyPutsTheTableOnTheClipboard)
{
    QGuiApplication::clipboard()->clear();
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 6);  // trend, site and span, the titles, and two rows
    EXPECT_EQ(lines.mid(0, 2), (QStringList{"Day", "Garden"}));
    EXPECT_TRUE(QGuiApplication::clipboard()->mimeData()->html().contains("<td>Air Temperature</td>"));
}

TEST_F(TrendWindowTest, CopyInADateFieldCopiesItsText)
{
    auto* date = trend->view()->findChild<QDateTimeEdit*>();
    ASSERT_TRUE(date);
    date->setFocus();
    date->selectAll();
    QGuiApplication::clipboard()->clear();
    window->actions().copy->trigger();
    EXPECT_FALSE(QGuiApplication::clipboard()->text().isEmpty());
    EXPECT_FALSE(QGuiApplication::clipboard()->text().contains("Air"));
}

TEST_F(TrendWindowTest, ALineHiddenByItsCheckBoxComesBackByUndo)
{
    QTest::mouseClick(&checkBox(0), Qt::LeftButton);
    ASSERT_EQ(shown(), QStringList("pressure"));
    undoOnceItRested();
    EXPECT_EQ(shown(), (QStringList{"airTemperature", "pressure"}));
    EXPECT_TRUE(checkBox(0).isChecked());
    window->actions().redo->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(shown(), QStringList("pressure"));
}

TEST_F(TrendWindowTest, LinesHiddenByTheTablesMenuComeBackByUndo)
{
    const QPoint row = table().visualRect(table().model()->index(1, 2)).center();
    QTest::mousePress(table().viewport(), Qt::RightButton, {}, row);
    QContextMenuEvent event(QContextMenuEvent::Mouse, row, table().viewport()->mapToGlobal(row));
    QApplication::sendEvent(table().viewport(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    for (QAction* action : menu->actions())
        if (action->text().startsWith("Show Only This"))
            menu->setActiveAction(action);
    QTest::keyClick(menu, Qt::Key_Return);
    ASSERT_EQ(shown(), QStringList("pressure"));
    undoOnceItRested();
    EXPECT_EQ(shown(), (QStringList{"airTemperature", "pressure"}));
}

TEST_F(TrendWindowTest, LinesHiddenByTheKeyComeBackByUndo)
{
    table().setFocus();
    table().selectRow(0);
    QTest::keyClick(&table(), Qt::Key_Space);
    ASSERT_EQ(shown(), QStringList("pressure"));
    undoOnceItRested();
    EXPECT_EQ(shown(), (QStringList{"airTemperature", "pressure"}));
}

TEST_F(TrendWindowTest, APropertyDroppedOntoATrendGetsAColourOfItsOwn)
{
    wind->setColor(property(0)->color());
    dropWind();
    const std::set<QRgb> colours{property(0)->color().rgb(), property(1)->color().rgb(), wind->color().rgb()};
    EXPECT_EQ(colours.size(), 3U);
    EXPECT_EQ(table().model()->index(2, 1).data(Qt::DecorationRole).value<QColor>().rgb(), wind->color().rgb());
}

TEST_F(TrendWindowTest, ATrendThatAPlugInMakesHasLinesOfDifferentColours)
{
    property(1)->setColor(property(0)->color());
    KTVPlugInModule::Arguments arguments;
    arguments.agent = station;
    arguments.siteWindowController = &window->controller();
    arguments.tables = KTVPropertyList{property(0), property(1)};
    window->controller().addPlugIn(composition.module()->instantiate(QLatin1String(kTrendClass), arguments), true);
    EXPECT_NE(property(0)->color(), property(1)->color());
}

TEST_F(TrendWindowTest, ColoursThatTheUserMadeEqualStayWhenALineComes)
{
    property(1)->setColor(property(0)->color());
    const QColor chosen = property(0)->color();
    dropWind();
    EXPECT_EQ(property(1)->color(), chosen);
}

/// As a tool tip shows it.
QString shownTip(const QString& toolTip)
{
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText().replace(QChar::Nbsp, u' ');
}

TEST_F(TrendWindowTest, ToolTipsShowNamesAsTheyAre)
{
    openTrend({wind});
    trend->setTitle("<i>Day</i>");
    const PropertyListModel& list = window->propertyList();
    const QModelIndex row = list.index(2, 0, list.index(0, 0));
    EXPECT_TRUE(shownTip(row.data(Qt::ToolTipRole).toString()).startsWith(wind->name()));
    EXPECT_EQ(shownTip(table().model()->index(0, 2).data(Qt::ToolTipRole).toString()), wind->name());
    const SourceListModel& trends = window->controller().sourceList();
    EXPECT_EQ(shownTip(trends.index(trends.rowOf(trend.get())).data(Qt::ToolTipRole).toString()), "<i>Day</i>");
}

/// The way of a picture: dialog, panel, file.
class CaseWindowTest : public TrendWindowTest {
protected:
    /// Saved where asked, over the span that the dialog proposes; answers what was told then.
    QString saveCase(const QString& name)
    {
        answer<QDialog>([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
        saveAs(site.file(name));
        window->actions().saveCase->trigger();
        const auto boxes = window->findChildren<QMessageBox*>();
        return boxes.isEmpty() ? QString() : boxes.back()->text() + u' ' + boxes.back()->informativeText();
    }
};

TEST_F(CaseWindowTest, WhatIsVisibleIsSavedAndTold)
{
    const QString said = saveCase("case.plotix");
    EXPECT_EQ(proposed, "Day.plotix");
    EXPECT_TRUE(said.contains("The case is saved")) << said.toStdString();
    EXPECT_TRUE(said.contains("600 record(s) of 2 property(s), 0 note(s), ")) << said.toStdString();
    const auto made = SiteDocument::open(site.file("case.plotix"));
    EXPECT_EQ(made->agents().front()->siteProperties().size(), 2U);
    EXPECT_EQ(made->archivedPlugIns().size(), 1U);
}

TEST_F(CaseWindowTest, TheStretchBetweenTheMarksIsProposed)
{
    setReading(trend.get(), {{"marks", QVariantMap{{"a", kStart + 6000}, {"b", kStart + 3000}}}});
    const QString said = saveCase("case.plotix");
    EXPECT_TRUE(said.contains("53 record(s) of 2 property(s)")) << said.toStdString();  // with one before and one after
}

TEST_F(CaseWindowTest, TheSiteItselfIsLeftAsItIs)
{
    answer<QMessageBox>([](QMessageBox* question) { question->button(QMessageBox::Yes)->click(); });  // replace it
    const QString said = saveCase("garden.plotix");
    EXPECT_TRUE(said.contains("is the site itself")) << said.toStdString();
    EXPECT_FALSE(site.document->isReplaced());
}

class PictureWindowTest : public TrendWindowTest {
protected:
    static QComboBox* listAt(const QString& label, const QDialog& dialog)
    {
        for (const QLabel* each : dialog.findChildren<QLabel*>())
            if (each->text().remove('&') == label)
                return qobject_cast<QComboBox*>(each->buddy());
        return nullptr;
    }
    QByteArray exported(int what, int format, const QString& name)
    {
        answer<QDialog>([what, format](QDialog* dialog) {
            listAt("Picture of:", *dialog)->setCurrentIndex(what);
            listAt("Format:", *dialog)->setCurrentIndex(format);
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        saveAs(site.file(name));
        window->actions().exportPicture->trigger();
        QFile file(site.file(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QString textOf(const QString& name) const
    {
        QProcess tool;
        tool.start("pdftotext", {"-layout", site.file(name), "-"});
        EXPECT_TRUE(tool.waitForFinished());
        return QString::fromUtf8(tool.readAllStandardOutput());
    }
};

TEST_F(PictureWindowTest, TheGraphIsSavedAsItLooks)
{
    const QImage image = QImage::fromData(exported(0, 0, "graph.png"), "PNG");
    EXPECT_EQ(image.size(), QSize(2400, 1200));
    EXPECT_LT(image.pixelColor(5, 5).lightness(), 100);
    EXPECT_EQ(proposed, "Day.png");
}

TEST_F(PictureWindowTest, TheOverviewStaysInTheWindow)
{
    const auto picture = [this](const char* name) { return QImage::fromData(exported(0, 0, name), "PNG"); };
    ASSERT_TRUE(reading(trend.get())->value("overview").toMap().value("shown").toBool());
    const QImage before = picture("with.png");
    setReading(trend.get(), {{"overview", QVariantMap()}});
    EXPECT_EQ(picture("without.png"), before);
}

TEST_F(PictureWindowTest, GraphAndTableAreSavedDarkOnWhite)
{
    const QImage image = QImage::fromData(exported(1, 0, "table.png"), "PNG");
    EXPECT_EQ(image.size(), QSize(2400, 1200));
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::white));
}

TEST_F(PictureWindowTest, TheTableInAPdfCanBeRead)
{
    EXPECT_TRUE(exported(1, 1, "table.pdf").startsWith("%PDF"));
    EXPECT_TRUE(textOf("table.pdf").contains("Air Temperature")) << qPrintable(textOf("table.pdf"));
    EXPECT_TRUE(textOf("table.pdf").contains("Day"));
    EXPECT_FALSE(textOf("table.pdf").contains("Page 1"));
}

TEST_F(PictureWindowTest, TheGraphInAPdfHasItsTitle)
{
    EXPECT_TRUE(exported(0, 1, "graph.pdf").startsWith("%PDF"));
    EXPECT_TRUE(textOf("graph.pdf").contains("Day")) << qPrintable(textOf("graph.pdf"));
}

/// The way of records: dialog, panel, task, file, and back through the importer.
class RecordsWindowTest : public TrendWindowTest {
protected:
    void exportTo(const QString& name, int format, const std::function<void(QDialog*)>& choose = {})
    {
        answer<QDialog>([format, choose](QDialog* dialog) {
            dialog->findChildren<QComboBox*>().at(1)->setCurrentIndex(format);
            if (choose)
                choose(dialog);
            for (QPushButton* button : dialog->findChildren<QPushButton*>())
                if (button->text().remove('&') == "Export…")
                    button->click();
        });
        saveAs(site.file(name));
        QSignalSpy said(window->statusBar(), &QStatusBar::messageChanged);
        window->actions().exportRecords->trigger();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->statusBar()->currentMessage().startsWith("Exported"); }));
    }
    /// The file in a site of its own.
    std::shared_ptr<SiteDocument> imported(const QString& name)
    {
        ImportOptions options;
        options.agentName = "Back";
        importFile(site.file(name), site.file(name + ".plotix"), options);
        return SiteDocument::open(site.file(name + ".plotix"));
    }
    static std::vector<double> valuesOf(const SiteDocument& document, const SiteAgent& agent, std::size_t position)
    {
        const RowId id = agent.siteProperties().at(position)->description().id;
        const auto block = document.records()->read(agent.id(), std::span(&id, 1), {}, {});
        return {block->columns[0].values.span().begin(), block->columns[0].values.span().end()};
    }
    void expectSame(const SiteDocument& back, std::size_t position, std::size_t original)
    {
        EXPECT_EQ(valuesOf(back, *back.agents().front(), position), valuesOf(*site.document, *station, original));
    }
};

TEST_F(RecordsWindowTest, TheLinesOfTheTrendComeBackFromAText)
{
    exportTo("lines.csv", 0);
    const auto back = imported("lines.csv");
    ASSERT_EQ(back->agents().front()->siteProperties().size(), 2U);
    expectSame(*back, 0, 0);
    expectSame(*back, 1, 1);
    EXPECT_EQ(proposed, "Station.csv");
}

TEST_F(RecordsWindowTest, AHiddenLineIsLeftOutAndAnotherPropertyTicked)
{
    QTest::mouseClick(&checkBox(0), Qt::LeftButton);
    exportTo("chosen.csv", 0, [](QDialog* dialog) {
        auto* list = dialog->findChild<QListWidget*>();
        EXPECT_EQ(list->item(0)->checkState(), Qt::Unchecked);
        list->item(2)->setCheckState(Qt::Checked);
    });
    const auto back = imported("chosen.csv");
    const auto& properties = back->agents().front()->siteProperties();
    ASSERT_EQ(properties.size(), 2U);
    EXPECT_EQ(properties[1]->name(), wind->name());
    expectSame(*back, 0, 1);
    expectSame(*back, 1, 2);
}

TEST_F(RecordsWindowTest, ASpreadsheetOfOursIsReadByUs)
{
    exportTo("lines.xlsx", 2);
    const auto back = imported("lines.xlsx");
    ASSERT_EQ(back->agents().front()->siteProperties().size(), 2U);
    expectSame(*back, 0, 0);
    expectSame(*back, 1, 1);
}

}  // namespace

}  // namespace plotix
