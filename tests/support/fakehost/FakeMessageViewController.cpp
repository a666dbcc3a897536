#include "tests/support/fakehost/FakeMessageViewController.h"

namespace fakehost {

FakeMessageViewController::FakeMessageViewController(CallLog* log, Slot slot) : m_log(log), m_slot(std::move(slot))
{
    *m_slot = this;
}

FakeMessageViewController::~FakeMessageViewController()
{
    if (*m_slot == this)
        *m_slot = nullptr;
}

void FakeMessageViewController::centerOnView(QWidget* view, const QString& message)
{
    m_log->note(QStringLiteral("message.center ") + message);
    m_messages.append(message);
    PlainMessageViewController::centerOnView(view, message);
}

QString FakeMessageViewController::shownMessage() const
{
    return coveredView() && !m_messages.isEmpty() ? m_messages.last() : QString();
}

QWidget* FakeMessageViewController::coveredView() const
{
    return view() && !view()->isHidden() ? view()->parentWidget() : nullptr;
}

}  // namespace fakehost
