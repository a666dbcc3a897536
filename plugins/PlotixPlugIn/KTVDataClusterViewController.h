#pragma once

#include "base/Date.h"
#include "base/KeyedCoder.h"
#include "plugins/PlotixPlugIn/KTVDataClusterDatePicker.h"
#include "plugins/PlotixPlugIn/KTVDataClusterViewControllerDelegate.h"
#include "plugins/PlotixPlugIn/ProgressIndicator.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <chrono>
#include <memory>

/// The panel that chooses a date range: two pickers, a pop-up of thirteen quick ranges, a Refresh button that reads
/// "Cancel" while records are fetched, and a progress indicator.
///
/// The plug-in *owns* it; it *owns* its view, unless the view's parent deletes it first, after which every operation is
/// still safe and the dates are kept. The delegate is *weak*. It validates nothing and fetches nothing. Whether a fetch
/// runs is kept in no field: only the controls show it. Main thread only.
class KTVDataClusterViewController : public QObject, public DataClusterDatePickerReturnKeyNotification {
    Q_OBJECT
public:
    using OptionalDate = plotix::OptionalDate;
    using Pointer = std::shared_ptr<KTVDataClusterViewController>;

    static constexpr std::chrono::milliseconds kApplyDelay{1000};

    /// Shows midnight today to midnight tomorrow. `applyDelay` is how long typing must pause.
    static Pointer make(std::chrono::milliseconds applyDelay = kApplyDelay);
    /// As `make`, then the dates under "fromDate" and "toDate"; a missing one leaves the default.
    static Pointer initWithCoder(const plotix::KeyedDecoder& decoder);
    ~KTVDataClusterViewController() override;

    /// What becomes of a range that ends before it begins. Forgotten: the accepted one is written, if there is one.
    enum class RefusedRange { Stored, Forgotten };

    /// Writes the pickers' dates under "fromDate" and "toDate" and nothing else. Stored: never change.
    void encodeWithCoder(plotix::KeyedEncoder& encoder, RefusedRange refused = RefusedRange::Stored) const;

    QWidget* view() const { return m_view; }
    KTVDataClusterDatePicker* fromDate() const { return m_fromDate; }
    KTVDataClusterDatePicker* toDate() const { return m_toDate; }
    QLabel* fromTextField() const { return m_fromTextField; }
    QLabel* toTextField() const { return m_toTextField; }
    QPushButton* quickDatePopupButton() const { return m_quickDatePopupButton; }
    QPushButton* refreshButton() const { return m_refreshButton; }
    ProgressIndicator* progressIndicator() const { return m_progressIndicator; }

    /// The pickers' exact dates. Setting notifies nobody and starts no timer; an absent date leaves the picker as it
    /// is.
    OptionalDate fromDateValue() const;
    OptionalDate toDateValue() const;
    void setFromDateValue(const OptionalDate& date);
    void setToDateValue(const OptionalDate& date);

    /// The clock that the pickers show and quick ranges go by; the user's at first. The dates stay.
    const CPTClock& clock() const { return m_clock; }
    void setClock(const CPTClock& clock);

    KTVDataClusterViewControllerDelegate* delegate() const { return m_delegate.get(); }
    void setDelegate(KTVDataClusterViewControllerDelegate* delegate) { m_delegate = delegate; }

    const OptionalDate& previousFromDate() const { return m_previousFromDate; }
    const OptionalDate& previousToDate() const { return m_previousToDate; }
    /// The latest delay timer, also after it has fired; null before the first edit.
    const QTimer* dateChangeDelayTimer() const { return m_dateChangeDelayTimer; }

    /// Sets the pickers whose date is given, then tells the delegate, even if neither is.
    void updateDates(const OptionalDate& fromDate, const OptionalDate& toDate);
    void acceptDates(QObject* sender);  ///< remembers the pickers' dates for restoring them
    /// Restores the accepted dates without telling the delegate. Before any `acceptDates` the pickers stay as they are.
    void restorePreviousDate();
    void refreshStarted(QObject* sender);
    void refreshComplete(QObject* sender);
    void returnKeyPressed(QObject* sender) override;
    void timerFireMethod();
    void hideControls();

public slots:
    void dateChanged(QObject* sender);  ///< an edit: starts or restarts the delay
    void refresh(QObject* sender);
    void cancel(QObject* sender);

    void setDateRangeToday(QObject* sender);
    void setDateRangeLast24Hours(QObject* sender);
    void setDateRangeYesterday(QObject* sender);
    void setDateRangeThisWeek(QObject* sender);
    void setDateRangeLastWeek(QObject* sender);
    void setDateRangeLast7Days(QObject* sender);
    void setDateRangeThisMonth(QObject* sender);
    void setDateRangeLastMonth(QObject* sender);
    void setDateRangeLast30Days(QObject* sender);
    void setDateRangeThisYear(QObject* sender);
    void setDateRangeLastYear(QObject* sender);
    void setDateRangeLast12Months(QObject* sender);
    void setDateRangeAllTime(QObject* sender);

protected:
    /// Return and Enter anywhere in the panel, also while the pickers are disabled.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit KTVDataClusterViewController(std::chrono::milliseconds applyDelay);

    void initDefaultDates();
    void initCommon();
    void loadView();
    void awakeFromNib();
    void connectControls();
    void buttonPressed();
    void delayRanOut();
    void keepEditedDates();
    void restoreFocus();

    std::chrono::milliseconds m_applyDelay;
    OptionalDate m_fromDateValue;  ///< pushed into the picker by loadView; then a copy, for when the picker is gone
    OptionalDate m_toDateValue;
    OptionalDate m_previousToDate;
    OptionalDate m_previousFromDate;
    CPTClock m_clock;
    QPointer<QTimer> m_dateChangeDelayTimer;
    WeakReference<KTVDataClusterViewControllerDelegate> m_delegate;

    QPointer<QWidget> m_view;
    QPointer<KTVDataClusterDatePicker> m_fromDate;
    QPointer<KTVDataClusterDatePicker> m_toDate;
    QPointer<QLabel> m_fromTextField;
    QPointer<QLabel> m_toTextField;
    QPointer<QPushButton> m_quickDatePopupButton;
    QPointer<QPushButton> m_refreshButton;
    QPointer<ProgressIndicator> m_progressIndicator;
    QPointer<QWidget> m_focusBeforeRefresh;  ///< the control that lost the focus by being disabled
};
