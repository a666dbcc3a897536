#include "plugins/PlotixPlugIn/HeadingPlace.h"

#include <QtCore/QEvent>
#include <QtWidgets/QLabel>

#include <algorithm>

namespace {

constexpr int kBehindLabel = 24;  // points behind the label's text
constexpr int kRightMargin = 20;  // of the view

}  // namespace

HeadingPlace::HeadingPlace(QWidget* heading, QLabel* label) : QObject(label), m_heading(heading), m_label(label)
{
    label->installEventFilter(this);
    label->parentWidget()->installEventFilter(this);
    heading->raise();
    place();
}

bool HeadingPlace::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize || event->type() == QEvent::Show)
        place();
    return QObject::eventFilter(watched, event);
}

void HeadingPlace::place()
{
    if (!m_heading || !m_label || !m_label->parentWidget())
        return;
    const QRect label = m_label->geometry();
    const int left = label.left() + m_label->sizeHint().width() + kBehindLabel;
    const int width = std::max(0, m_label->parentWidget()->width() - kRightMargin - left);
    m_heading->setGeometry(left, label.top(), width, label.height());
}
