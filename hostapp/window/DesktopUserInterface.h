#pragma once

#include "hostapp/window/CurrentInput.h"
#include "hostapp/window/SharedPicture.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QObject>

class QMenu;
class QMessageBox;

/// Alerts, save panel, sharing menu and modifier keys on a real desktop. The composition root *owns* it. Main thread
/// only.
namespace plotix {

class DesktopUserInterface : public QObject, public KTVUserInterface {
    Q_OBJECT
public:
    void beginSheet(const KTVAlert& alert, QWidget* window, std::function<void()> completionHandler) override;
    void runModal(const KTVAlert& alert) override;
    std::optional<QString> runSavePanel(const QStringList& allowedFileTypes) override;
    /// The same, with a file name made of such a title in the panel.
    virtual std::optional<QString> askWhereToSave(const QStringList& allowedFileTypes, const QString& title);
    void showSharingPicker(const QImage& image, const std::weak_ptr<KTVSharingPickerDelegate>& delegate,
                           const QRect& rect, QWidget* view, KTVRectEdge preferredEdge) override;

    /// The keys of the current event, together with those a menu holds for the window it goes to.
    Qt::KeyboardModifiers modifierFlags() const override;
    QString localizedDescription(const Date& date) const override;

    /// Keys that count as held in the gestures of one window, until changed; for desktops whose window manager keeps
    /// Alt for itself.
    void setHeldModifiers(QWidget* window, Qt::KeyboardModifiers modifiers) { m_input.hold(window, modifiers); }
    Qt::KeyboardModifiers heldModifiers(const QWidget* window) const { return m_input.held(window); }

private:
    CurrentInput m_input;
    SharedPicture m_sharedPicture;
};

/// What the sharing picker offers for an image: copy it, save it, mail it, open it in another program; what no program
/// can do is greyed, with the reason. The menu deletes itself when it closes; it *borrows* the interface and the
/// picture.
QMenu* makeSharingMenu(const QImage& image, KTVUserInterface* userInterface, SharedPicture& sharedPicture,
                       QWidget* parent);

}  // namespace plotix
