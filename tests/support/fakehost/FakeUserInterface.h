#pragma once

#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "tests/support/fakehost/CallLog.h"

#include <QtCore/QPointer>

#include <vector>

/// A desktop without a user: keeps everything it was asked to show, and answers as scripted. Main thread only.
///
/// A sheet stays up until the test dismisses it. A modal alert is dismissed at once, after `duringModal` has run. Save
/// panels are cancelled unless an answer is set. No modifier key is held down at first.
namespace fakehost {

class FakeUserInterface : public KTVUserInterface {
public:
    struct Sheet {
        KTVAlert alert;
        QPointer<QWidget> window;
        std::function<void()> completionHandler;
    };
    struct Sharing {
        QImage image;
        std::weak_ptr<KTVSharingPickerDelegate> delegate;
        QRect rect;
        QPointer<QWidget> view;
        KTVRectEdge preferredEdge;
    };

    explicit FakeUserInterface(CallLog* log) : m_log(log) {}

    void beginSheet(const KTVAlert& alert, QWidget* window, std::function<void()> completionHandler) override;
    void runModal(const KTVAlert& alert) override;
    std::optional<QString> runSavePanel(const QStringList& allowedFileTypes) override;
    void showSharingPicker(const QImage& image, const std::weak_ptr<KTVSharingPickerDelegate>& delegate,
                           const QRect& rect, QWidget* view, KTVRectEdge preferredEdge) override;
    Qt::KeyboardModifiers modifierFlags() const override { return m_modifierFlags; }

    /// "2013-01-31 09:05:07", in UTC whatever the user's locale and zone.
    QString localizedDescription(const plotix::Date& date) const override;

    const std::vector<Sheet>& sheets() const { return m_sheets; }
    /// Runs the sheet's completion handler. Requires: index < sheets().size().
    void dismissSheet(std::size_t index);

    const std::vector<KTVAlert>& modalAlerts() const { return m_modalAlerts; }
    /// Runs while a modal alert is up, before it is dismissed.
    void duringModal(std::function<void()> action) { m_duringModal = std::move(action); }

    const std::vector<QStringList>& savePanels() const { return m_savePanels; }  ///< the allowed file types
    void answerSavePanelWith(std::optional<QString> path) { m_savePanelAnswer = std::move(path); }

    const std::vector<Sharing>& sharings() const { return m_sharings; }
    void holdDown(Qt::KeyboardModifiers modifiers) { m_modifierFlags = modifiers; }

private:
    CallLog* m_log;  // borrowed
    std::vector<Sheet> m_sheets;
    std::vector<KTVAlert> m_modalAlerts;
    std::function<void()> m_duringModal;
    std::vector<QStringList> m_savePanels;
    std::optional<QString> m_savePanelAnswer;
    std::vector<Sharing> m_sharings;
    Qt::KeyboardModifiers m_modifierFlags = Qt::NoModifier;
};

}  // namespace fakehost
