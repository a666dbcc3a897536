#include "tests/support/fakehost/FakeUserInterface.h"

#include <QtCore/QDateTime>

#include <cassert>
#include <cmath>

namespace fakehost {

void FakeUserInterface::beginSheet(const KTVAlert& alert, QWidget* window, std::function<void()> completionHandler)
{
    m_log->note(QStringLiteral("userInterface.beginSheet ") + alert.messageText);
    m_sheets.push_back({alert, window, std::move(completionHandler)});
}

void FakeUserInterface::runModal(const KTVAlert& alert)
{
    m_log->note(QStringLiteral("userInterface.runModal ") + alert.messageText);
    m_modalAlerts.push_back(alert);
    if (m_duringModal)
        m_duringModal();
    m_log->note(QStringLiteral("userInterface.modalDismissed ") + alert.messageText);
}

std::optional<QString> FakeUserInterface::runSavePanel(const QStringList& allowedFileTypes)
{
    m_log->note(QStringLiteral("userInterface.runSavePanel ") + allowedFileTypes.join(u','));
    m_savePanels.push_back(allowedFileTypes);
    return m_savePanelAnswer;
}

void FakeUserInterface::showSharingPicker(const QImage& image, const std::weak_ptr<KTVSharingPickerDelegate>& delegate,
                                          const QRect& rect, QWidget* view, KTVRectEdge preferredEdge)
{
    m_log->note(QStringLiteral("userInterface.showSharingPicker"));
    m_sharings.push_back({image, delegate, rect, view, preferredEdge});
}

QString FakeUserInterface::localizedDescription(const plotix::Date& date) const
{
    const auto seconds = static_cast<qint64>(std::floor(date.seconds));
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

void FakeUserInterface::dismissSheet(std::size_t index)
{
    assert(index < m_sheets.size());
    if (const auto handler = std::exchange(m_sheets[index].completionHandler, {}))
        handler();
}

}  // namespace fakehost
