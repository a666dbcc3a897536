#include "plugins/PlotixPlugIn/RangeNotice.h"

#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>

#include <algorithm>

namespace {

constexpr int kMargin = 20;         // points of the graph's outer margin, which the notice fills
constexpr double kFontShare = 0.9;  // of the usual size

QString localized(const char* text)
{
    return KTVBundle::mainBundle()->localizedString(QString::fromLatin1(text));
}

constexpr auto kOutside = QT_TRANSLATE_NOOP("Plotix", "Outside the values shown: %1");
constexpr auto kFlat = QT_TRANSLATE_NOOP("Plotix", "Too small to be seen: %1");

}  // namespace

RangeNotice::RangeNotice(QWidget* graphView)
    : QFrame(graphView), m_label(new QLabel(this)), m_button(new QToolButton(this))
{
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() > 0 ? small.pointSizeF() * kFontShare : 9);
    m_label->setFont(small);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setMinimumWidth(1);
    small.setUnderline(true);  // it has no frame that would say that it can be clicked
    m_button->setFont(small);
    m_button->setAutoRaise(true);
    m_button->setFocusPolicy(Qt::TabFocus);
    m_button->setText(localized(QT_TRANSLATE_NOOP("Plotix", "Show Scaled")));
    m_button->setToolTip(localized(QT_TRANSLATE_NOOP("Plotix", "Fit all values, however large or small")));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(m_label, 1);
    row->addWidget(m_button);
    connect(m_button, &QToolButton::clicked, this, &RangeNotice::scalingRequested);
    graphView->installEventFilter(this);
    hide();
}

void RangeNotice::tell(const plotix::OutsideLines& lines)
{
    if (lines == m_told)
        return;
    m_told = lines;
    setVisible(lines.kind != plotix::OutsideLines::Kind::None);
    if (isHidden())
        return;
    const char* words = lines.kind == plotix::OutsideLines::Kind::Outside ? kOutside : kFlat;
    m_label->setText(localized(words).arg(plotix::shortList(lines.names)));
    m_label->setToolTip(plainToolTip(lines.names.join(QLatin1Char('\n'))));
    place();
}

QString RangeNotice::text() const
{
    return isHidden() ? QString() : m_label->text();
}

bool RangeNotice::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QFrame::eventFilter(watched, event);
}

void RangeNotice::place()
{
    const int room = std::max(0, parentWidget()->width() - 2 * kMargin);
    const int width = std::min(sizeHint().width(), room);
    setGeometry(parentWidget()->width() - kMargin - width, 0, width, kMargin);
}
