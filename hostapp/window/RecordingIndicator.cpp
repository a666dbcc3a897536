#include "hostapp/window/RecordingIndicator.h"

#include "hostapp/window/SiteRecording.h"

#include <QtCore/QLocale>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

namespace plotix {

namespace {

constexpr QColor kRecordingRed(0xd9, 0x3a, 0x3a);

QPixmap dot(double density)
{
    constexpr int kSide = 10;  // points
    QPixmap picture(QSize(kSide, kSide) * density);
    picture.setDevicePixelRatio(density);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kRecordingRed);
    painter.drawEllipse(QRectF(0.5, 0.5, kSide - 1, kSide - 1));
    return picture;
}

}  // namespace

QString shortMoment(const QDateTime& moment, const QDateTime& now)
{
    const QLocale locale;
    return moment.date() == now.date() ? locale.toString(moment.time(), QLocale::ShortFormat)
                                       : locale.toString(moment, QLocale::ShortFormat);
}

RecordingIndicator::RecordingIndicator(SiteRecording* recording, QWidget* parent)
    : QWidget(parent), m_recording(recording), m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("recordingIndicator"));
    auto* sign = new QLabel(this);
    sign->setPixmap(dot(devicePixelRatioF()));
    m_text->setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 0, 6, 0);
    row->addWidget(sign);
    row->addWidget(m_text);
    connect(recording, &SiteRecording::progressed, this, &RecordingIndicator::showStatus);
    connect(recording, &SiteRecording::switched, this, &RecordingIndicator::showStatus);
    showStatus();
}

QString RecordingIndicator::text() const
{
    return m_recording->isOn() ? m_text->text() : QString();
}

void RecordingIndicator::showStatus()
{
    setVisible(m_recording->isOn());
    if (!m_recording->isOn())
        return;
    const QString since = shortMoment(m_recording->since(), QDateTime::currentDateTime());
    const auto shown = [](std::size_t count) { return static_cast<int>(std::min<std::size_t>(count, INT_MAX)); };
    QString text = tr("Recording since %1: %Ln record(s)", nullptr, shown(m_recording->stored())).arg(since);
    if (const std::size_t waiting = m_recording->onDisk(); waiting > 0)
        text += tr("; %Ln record(s) wait on this disk for the server", nullptr, shown(waiting));
    m_text->setText(text);
    m_text->setToolTip(m_recording->message());
    setAccessibleName(m_text->text());
}

}  // namespace plotix
