#include "plugins/PlotixPlugIn/KTVDataClusterViewController.h"

#include "plugins/PlotixPlugIn/DatePanelLayout.h"
#include "plugins/PlotixPlugIn/QuickRangeMenu.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "ui_KTVDataClusterViewController.h"

#include <QtCore/QCalendar>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>

namespace {

// Stored: never change.
const QString kFromDateKey = QStringLiteral("fromDate");
const QString kToDateKey = QStringLiteral("toDate");

/// How soon a delay that ran out under a menu or a modal panel looks again.
constexpr std::chrono::milliseconds kPostponement{50};

constexpr QMargins kPanelMargins{12, 6, 12, 6};  // points
constexpr int kControlGap = 8;                   // points

QString localized(const char* key)
{
    return KTVBundle::mainBundle()->localizedString(QLatin1String(key));
}

plotix::Date dateFrom(const QDateTime& dateTime)
{
    return {static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000.0};
}

/// While a menu is open or an application-modal panel is up, nothing may change behind it. A sheet belongs to one
/// window and stops nothing.
bool isMenuOrModalPanelUp()
{
    if (QApplication::activePopupWidget())
        return true;
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && window->windowModality() == Qt::ApplicationModal;
    });
}

void decodeDate(const plotix::KeyedDecoder& decoder, const QString& key, plotix::OptionalDate& date)
{
    bool isNumber = false;
    const double seconds = decoder.decodeValue(key).toDouble(&isNumber);
    if (isNumber)
        date = plotix::Date{seconds};
}

}  // namespace

KTVDataClusterViewController::KTVDataClusterViewController(std::chrono::milliseconds applyDelay)
    : m_applyDelay(applyDelay)
{
}

KTVDataClusterViewController::~KTVDataClusterViewController()
{
    delete m_view;
}

KTVDataClusterViewController::Pointer KTVDataClusterViewController::make(std::chrono::milliseconds applyDelay)
{
    Pointer controller(new KTVDataClusterViewController(applyDelay));
    controller->initDefaultDates();
    controller->initCommon();
    return controller;
}

KTVDataClusterViewController::Pointer KTVDataClusterViewController::initWithCoder(const plotix::KeyedDecoder& decoder)
{
    Pointer controller(new KTVDataClusterViewController(kApplyDelay));
    controller->initDefaultDates();
    decodeDate(decoder, kFromDateKey, controller->m_fromDateValue);
    decodeDate(decoder, kToDateKey, controller->m_toDateValue);
    controller->initCommon();
    return controller;
}

void KTVDataClusterViewController::encodeWithCoder(plotix::KeyedEncoder& encoder, RefusedRange refused) const
{
    OptionalDate from = fromDateValue();
    OptionalDate to = toDateValue();
    const bool isRefused = from && to && from->seconds > to->seconds;
    if (isRefused && refused == RefusedRange::Forgotten && m_previousFromDate && m_previousToDate) {
        from = m_previousFromDate;
        to = m_previousToDate;
    }
    if (from)
        encoder.encodeValue(kFromDateKey, from->seconds);
    if (to)
        encoder.encodeValue(kToDateKey, to->seconds);
}

void KTVDataClusterViewController::initDefaultDates()
{
    // Today starts by the user's calendar; the day after it is counted by the Gregorian one. A day is a calendar day
    // here, not 86,400 seconds.
    static const QCalendar gregorian(QCalendar::System::Gregorian);
    const QDateTime startOfToday = QDate::currentDate().startOfDay();
    const QCalendar::YearMonthDay day = gregorian.partsFromDate(startOfToday.date().addDays(1));
    const QDate tomorrow = gregorian.dateFromParts(day);
    m_fromDateValue = dateFrom(startOfToday);
    m_toDateValue = dateFrom(tomorrow.startOfDay());
}

void KTVDataClusterViewController::initCommon()
{
    loadView();
}

void KTVDataClusterViewController::loadView()
{
    m_view = new QWidget;
    Ui::KTVDataClusterViewController outlets;
    outlets.setupUi(m_view);
    m_fromDate = outlets.fromDate;
    m_toDate = outlets.toDate;
    m_fromTextField = outlets.fromTextField;
    m_toTextField = outlets.toTextField;
    m_quickDatePopupButton = outlets.quickDatePopupButton;
    m_refreshButton = outlets.refreshButton;
    m_progressIndicator = outlets.progressIndicator;
    connectControls();
    awakeFromNib();
    m_fromDate->setDateValue(m_fromDateValue);
    m_toDate->setDateValue(m_toDateValue);
}

void KTVDataClusterViewController::awakeFromNib()
{
    m_progressIndicator->hide();
}

void KTVDataClusterViewController::connectControls()
{
    m_fromTextField->setText(localized(QT_TRANSLATE_NOOP("Plotix", "From")));
    m_toTextField->setText(localized(QT_TRANSLATE_NOOP("Plotix", "To")));
    m_quickDatePopupButton->setText(localized(QT_TRANSLATE_NOOP("Plotix", "Quick Range")));
    m_quickDatePopupButton->setMenu(makeQuickRangeMenu(*this, m_quickDatePopupButton));

    // Wide enough for either title, so that nothing moves when a fetch starts.
    m_refreshButton->setText(localized(QT_TRANSLATE_NOOP("Plotix", "Cancel")));
    const int cancelWidth = m_refreshButton->sizeHint().width();
    m_refreshButton->setText(localized(QT_TRANSLATE_NOOP("Plotix", "Refresh")));
    m_refreshButton->setMinimumWidth(std::max(cancelWidth, m_refreshButton->sizeHint().width()));
    QSizePolicy keepsItsPlace = m_progressIndicator->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    m_progressIndicator->setSizePolicy(keepsItsPlace);

    auto* layout = new DatePanelLayout(m_view);
    layout->setContentsMargins(kPanelMargins);
    layout->setSpacing(kControlGap);
    layout->addGroup({m_fromTextField, m_fromDate});
    layout->addGroup({m_toTextField, m_toDate});
    layout->addGroup({m_quickDatePopupButton}, DatePanelLayout::WhenWrapped::BeginsRow);
    layout->addGroup({m_progressIndicator, m_refreshButton});

    m_toDate->setDayMeans(KTVDataClusterDatePicker::DayMeans::ItsEnd);  // "until the 3rd" includes that day
    for (KTVDataClusterDatePicker* picker : {m_fromDate.data(), m_toDate.data()}) {
        picker->setNotifyReturnKeyDelegate(this);
        connect(picker, &KTVDataClusterDatePicker::dateEdited, this, [this, picker] {
            keepEditedDates();
            dateChanged(picker);
        });
    }
    connect(m_refreshButton, &QPushButton::clicked, this, &KTVDataClusterViewController::buttonPressed);
    for (QWidget* control : {m_view.data(), static_cast<QWidget*>(m_quickDatePopupButton.data()),
                             static_cast<QWidget*>(m_refreshButton.data())})
        control->installEventFilter(this);
}

bool KTVDataClusterViewController::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            event->accept();
            returnKeyPressed(watched);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void KTVDataClusterViewController::keepEditedDates()
{
    m_fromDateValue = fromDateValue();
    m_toDateValue = toDateValue();
}

KTVDataClusterViewController::OptionalDate KTVDataClusterViewController::fromDateValue() const
{
    return m_fromDate ? m_fromDate->dateValue() : m_fromDateValue;
}

KTVDataClusterViewController::OptionalDate KTVDataClusterViewController::toDateValue() const
{
    return m_toDate ? m_toDate->dateValue() : m_toDateValue;
}

void KTVDataClusterViewController::setFromDateValue(const OptionalDate& date)
{
    if (!date)
        return;
    m_fromDateValue = date;
    if (m_fromDate)
        m_fromDate->setDateValue(date);
}

void KTVDataClusterViewController::setToDateValue(const OptionalDate& date)
{
    if (!date)
        return;
    m_toDateValue = date;
    if (m_toDate)
        m_toDate->setDateValue(date);
}

void KTVDataClusterViewController::setClock(const CPTClock& clock)
{
    m_clock = clock;
    for (KTVDataClusterDatePicker* picker : {m_fromDate.data(), m_toDate.data()})
        if (picker)
            picker->setClock(clock);
}

void KTVDataClusterViewController::updateDates(const OptionalDate& fromDate, const OptionalDate& toDate)
{
    setFromDateValue(fromDate);
    setToDateValue(toDate);
    if (m_delegate && m_delegate->respondsToDateChanged())
        m_delegate->dateChanged(this);
}

void KTVDataClusterViewController::acceptDates(QObject*)
{
    m_previousToDate = toDateValue();
    m_previousFromDate = fromDateValue();
}

void KTVDataClusterViewController::restorePreviousDate()
{
    setToDateValue(m_previousToDate);
    setFromDateValue(m_previousFromDate);
}

void KTVDataClusterViewController::dateChanged(QObject*)
{
    if (m_dateChangeDelayTimer) {
        m_dateChangeDelayTimer->stop();
        m_dateChangeDelayTimer->deleteLater();
    }
    m_dateChangeDelayTimer = new QTimer(this);
    m_dateChangeDelayTimer->setSingleShot(true);
    m_dateChangeDelayTimer->setTimerType(Qt::PreciseTimer);
    connect(m_dateChangeDelayTimer, &QTimer::timeout, this, &KTVDataClusterViewController::delayRanOut);
    m_dateChangeDelayTimer->start(m_applyDelay);
}

void KTVDataClusterViewController::delayRanOut()
{
    if (isMenuOrModalPanelUp())
        m_dateChangeDelayTimer->start(kPostponement);
    else
        timerFireMethod();
}

void KTVDataClusterViewController::timerFireMethod()
{
    updateDates({}, {});
}

void KTVDataClusterViewController::buttonPressed()
{
    // One button serves both actions; its text says which. That text is localised, so compare with the localised one.
    if (m_refreshButton->text() == localized(QT_TRANSLATE_NOOP("Plotix", "Cancel")))
        cancel(m_refreshButton);
    else
        refresh(m_refreshButton);
}

void KTVDataClusterViewController::refresh(QObject*)
{
    refreshStarted(nullptr);
    if (m_delegate)
        m_delegate->refresh(this);
}

void KTVDataClusterViewController::cancel(QObject*)
{
    refreshComplete(nullptr);
    if (m_delegate)
        m_delegate->cancel(this);
}

void KTVDataClusterViewController::returnKeyPressed(QObject*)
{
    // Compares with the text as written here, not with its translation: where "Cancel" is translated, Return always
    // refreshes. "Fixing" this would change what Return does for those users.
    if (m_refreshButton && m_refreshButton->text() == QLatin1String("Cancel")) {
        refreshComplete(nullptr);
        if (m_delegate)
            m_delegate->cancel(this);
    } else if (m_delegate && m_delegate->respondsToRefresh()) {
        refreshStarted(nullptr);
        if (m_delegate)
            m_delegate->refresh(this);
    }
}

void KTVDataClusterViewController::refreshStarted(QObject*)
{
    if (!m_view)
        return;
    QWidget* focus = m_view->window()->focusWidget();
    const bool losesFocus = focus && (focus == m_fromDate || focus == m_toDate || focus == m_quickDatePopupButton);
    if (losesFocus)
        m_focusBeforeRefresh = focus;
    m_fromDate->setEnabled(false);
    m_toDate->setEnabled(false);
    m_quickDatePopupButton->setEnabled(false);
    m_progressIndicator->startAnimation();
    m_progressIndicator->show();
    m_refreshButton->setText(localized(QT_TRANSLATE_NOOP("Plotix", "Cancel")));
    // A disabled editor passes the focus to no widget, and the next Return would never reach this panel.
    if (losesFocus)
        m_refreshButton->setFocus();
}

void KTVDataClusterViewController::refreshComplete(QObject*)
{
    if (!m_view)
        return;
    m_fromDate->setEnabled(true);
    m_toDate->setEnabled(true);
    m_progressIndicator->hide();
    m_progressIndicator->stopAnimation();
    m_quickDatePopupButton->setEnabled(true);
    m_refreshButton->setText(localized(QT_TRANSLATE_NOOP("Plotix", "Refresh")));
    restoreFocus();
}

void KTVDataClusterViewController::restoreFocus()
{
    // Whoever was typing when the fetch started may go on typing, unless the focus was moved meanwhile.
    if (m_focusBeforeRefresh && m_view->window()->focusWidget() == m_refreshButton)
        m_focusBeforeRefresh->setFocus();
    m_focusBeforeRefresh = nullptr;
}

void KTVDataClusterViewController::hideControls()
{
    const std::initializer_list<QWidget*> controls = {m_fromDate, m_toDate, m_fromTextField, m_toTextField,
                                                      m_quickDatePopupButton};
    for (QWidget* control : controls)
        if (control)
            control->hide();
}
