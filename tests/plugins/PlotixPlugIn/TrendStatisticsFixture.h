#pragma once

#include "plugins/PlotixPlugIn/InfoTableModel.h"
#include "plugins/PlotixPlugIn/reading/TrendReader.h"
#include "plugins/PlotixPlugIn/reading/statistics/LimitDialog.h"
#include "plugins/PlotixPlugIn/reading/statistics/StatisticsHeading.h"
#include "tests/plugins/PlotixPlugIn/PropertyTableFixture.h"

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>

/// A trend whose table tells more than its own columns: an hour of one line, or a minute of two, and hands that choose
/// columns, click cells and give limits.
class TrendStatisticsFixture : public PropertyTableFixture {
protected:
    static constexpr int kFirstFigure = InfoTableModel::kColumnCount;

    /// An hour of one value a minute: 0, 1 … 60.
    void openAnHour(const QVariantMap& choices = {})
    {
        trend = KTVPlotixPlugIn::initWithAgent(host.agent(), &host.siteWindowController(),
                                               KTVPropertyList{airTemperature}, plotix::Date{0}, plotix::Date{3600});
        trend->setReading({{"readableLabels", true}, {"lineCommands", true}});
        choose(choices);
        trend->view()->resize(1100, 640);
        deliver(anHour());
        settle();
    }
    /// A minute of air temperature from 0 to 9 °C, and of pressure from 1 to 2 hPa.
    void openTwoLines()
    {
        open({"airTemperature", "pressure"});
        deliver(host.records().times({0, 60}).column("airTemperature", {0, 9}).column("pressure", {1, 2}).build());
        show();
    }
    KTVRecordDictionaryPtr anHour() const
    {
        std::vector<double> times, values;
        for (int minute = 0; minute <= 60; ++minute) {
            times.push_back(minute * 60);
            values.push_back(minute);
        }
        return host.records().times(times).column("airTemperature", values).build();
    }
    void choose(const QVariantMap& choices)
    {
        trend->setReading({{"statistics", choices}});
        settle();
    }
    void chooseColumns(const QStringList& columns) { choose({{"columns", columns}}); }
    static void settle() { QCoreApplication::processEvents(); }
    void see(double from, double to)
    {
        trend->graph()->defaultPlotSpace()->setXRange({from, to - from});
        settle();
    }
    double middleOfTheView()
    {
        return trend->graph()->defaultPlotSpace()->xRange().location +
               trend->graph()->defaultPlotSpace()->xRange().length / 2;
    }

    PropertyDetailsTableView& table() { return *trend->infoTable(); }
    InfoTableModel& model() { return *table().infoTableModel(); }
    QString cell(int column, int row = 0) { return model().index(row, column).data().toString(); }
    QString cellOf(const char* identifier, int row = 0)
    {
        return cell(model().columnNamed(QLatin1String(identifier)), row);
    }
    plotix::StatisticsHeading& heading() { return *trend->view()->findChild<plotix::StatisticsHeading*>(); }
    QAction* action(const QString& text)
    {
        QList<QAction*> within;
        for (QAction* each : static_cast<plotix::TrendReader*>(trend->trendReader())->actions())
            within << each << (each->menu() ? each->menu()->actions() : QList<QAction*>());
        for (QAction* each : within)
            if (each->text().remove(u'&') == text)
                return each;
        return nullptr;
    }
    plotix::LimitDialog* limitDialog()
    {
        auto* dialog = trend->view()->findChild<plotix::LimitDialog*>();
        return dialog && dialog->isVisible() ? dialog : nullptr;
    }
    void giveLimit(const QString& text)
    {
        auto* field = limitDialog()->findChild<QLineEdit*>();
        field->setText(text);
        QTest::keyClick(field, Qt::Key_Return);
        settle();
    }
    static bool hasLabel(const QWidget& parent, const QString& text)
    {
        const QList<QLabel*> labels = parent.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) { return label->text() == text; });
    }
    /// Where a column stands on the screen.
    int placeOf(const char* identifier)
    {
        return table().horizontalHeader()->visualIndex(model().columnNamed(QLatin1String(identifier)));
    }
    bool isSeenWhole(const char* identifier)
    {
        const QModelIndex index = model().index(0, model().columnNamed(QLatin1String(identifier)));
        return table().viewport()->rect().contains(table().visualRect(index));
    }
    void clickCell(const char* identifier, int row = 0)
    {
        const QModelIndex index = model().index(row, model().columnNamed(QLatin1String(identifier)));
        table().scrollTo(index);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, table().visualRect(index).center());
        settle();
    }
};
