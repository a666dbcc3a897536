#include "hostapp/window/MessageOverlay.h"

#include "plugins/PlotixPlugIn/host/KTVBundle.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>

#include <algorithm>

namespace plotix {

namespace {
constexpr int kMargin = 24;           // points between text and edge of the background
constexpr int kDistance = 16;         // points kept free to the covered view's edges
constexpr double kCornerRadius = 10;  // points
}  // namespace

MessageLabel::MessageLabel()
{
    setObjectName(QStringLiteral("messageOverlay"));
    setAlignment(Qt::AlignCenter);
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin / 2);
    QFont messageFont = font();
    messageFont.setPointSizeF(messageFont.pointSizeF() * 1.4);
    setFont(messageFont);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, Qt::white);
    setPalette(colours);
    hide();
}

void MessageLabel::centre()
{
    const QWidget* covered = parentWidget();
    if (!covered)
        return;
    const int widest = std::max(1, covered->width() - 2 * kDistance);
    setWordWrap(false);
    QSize size = sizeHint();
    if (size.width() > widest) {
        setWordWrap(true);
        size = QSize(widest, heightForWidth(widest));
    }
    setGeometry(QRect(QPoint((covered->width() - size.width()) / 2, (covered->height() - size.height()) / 2), size));
}

void MessageLabel::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(255, 255, 255, 40), 1));
    painter.setBrush(QColor(0, 0, 0, 165));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCornerRadius, kCornerRadius);
    painter.end();
    QLabel::paintEvent(event);
}

bool MessageLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange) {
        if (m_followed)
            m_followed->removeEventFilter(this);
        m_followed = parentWidget();
        if (m_followed)
            m_followed->installEventFilter(this);
    }
    return QLabel::event(event);
}

bool MessageLabel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == parentWidget())
        centre();
    return QLabel::eventFilter(watched, event);
}

MessageOverlay::MessageOverlay() : m_label(new MessageLabel) {}

MessageOverlay::~MessageOverlay()
{
    delete m_label;
}

void MessageOverlay::centerOnView(QWidget* view, const QString& message)
{
    if (!view)
        return;
    if (!m_label)
        m_label = new MessageLabel;
    if (m_label->parentWidget() != view)
        m_label->setParent(view);
    const QString text = KTVBundle::mainBundle()->localizedString(message);
    m_label->setText(text);
    m_label->setAccessibleName(text);
    m_label->centre();
    m_label->show();
    m_label->raise();
}

}  // namespace plotix
