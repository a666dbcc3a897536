#pragma once

#include "plugins/PlotixPlugIn/KTVDataClusterViewController.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVHostServices.h"
#include "plugins/PlotixPlugIn/host/KTVNaturalLanguageDateCreator.h"

#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <map>

/// Records what a date range controller tells it.
class RecordingDateDelegate : public KTVDataClusterViewControllerDelegate {
public:
    bool respondsToDateChanged() const override { return answersDateChanged; }
    bool respondsToRefresh() const override { return answersRefresh; }
    void dateChanged(QObject* sender) override { record("dateChanged", sender); }
    void refresh(QObject* sender) override { record("refresh", sender); }
    void cancel(QObject* sender) override { record("cancel", sender); }

    bool answersDateChanged = true;
    bool answersRefresh = true;
    QStringList calls;
    QObject* lastSender = nullptr;
    std::function<void()> duringCall;  ///< runs inside every call, if set

private:
    void record(const char* call, QObject* sender)
    {
        calls.append(QLatin1String(call));
        lastSender = sender;
        if (duringCall)
            duringCall();
    }
};

/// A bundle whose translations a test sets; other texts are their keys.
class TranslatedBundle : public KTVBundle {
public:
    QString localizedString(const QString& key) const override
    {
        const auto found = translations.find(key);
        return found == translations.end() ? key : found->second;
    }
    QImage imageNamed(const QString&) const override { return {}; }
    QString executableName() const override { return QStringLiteral("tests"); }

    std::map<QString, QString> translations;
};

/// Gives range number n the dates n × 1000 and n × 1000 + 500, or none, and remembers what was asked.
class NumberedDateCreator : public KTVNaturalLanguageDateCreator {
public:
    void dateRange(KTVQuickRange range, OptionalDate& start, OptionalDate& end) const override
    {
        asked.push_back(range);
        startedEmpty = startedEmpty && !start && !end;
        if (!answers)
            return;
        start = plotix::Date{static_cast<int>(range) * 1000.0};
        end = plotix::Date{static_cast<int>(range) * 1000.0 + 500};
    }

    bool answers = true;
    mutable bool startedEmpty = true;
    mutable std::vector<KTVQuickRange> asked;
};

/// A date range controller with a recording delegate in a small host of its own.
class DateRangeControllerTest : public testing::Test {
protected:
    DateRangeControllerTest()
    {
        KTVHostServices services;
        services.mainBundle = &bundle;
        services.dateCreator = &dateCreator;
        previousServices = KTVHostServices::install(services);
        makeController();
    }
    ~DateRangeControllerTest() override
    {
        controller.reset();
        KTVHostServices::install(previousServices);
    }

    void makeController(std::chrono::milliseconds delay = kShortDelay)
    {
        controller = KTVDataClusterViewController::make(delay);
        controller->setDelegate(&delegate);
    }
    void showPanel()
    {
        controller->view()->show();
        controller->view()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller->view()));
    }
    /// One press of the up arrow in the picker, as a user edits.
    void edit(KTVDataClusterDatePicker* picker) { QTest::keyClick(picker, Qt::Key_Up); }
    void waitForDateChanged(int count)
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return delegate.calls.count("dateChanged") >= count; }, 5000));
    }
    void waitLongerThanTheDelay() { QTest::qWait(static_cast<int>(3 * kShortDelay.count())); }

    static constexpr std::chrono::milliseconds kShortDelay{60};

    TranslatedBundle bundle;
    NumberedDateCreator dateCreator;
    RecordingDateDelegate delegate;
    KTVDataClusterViewController::Pointer controller;
    KTVHostServices previousServices;
};
