#pragma once

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
    void showSharingPicker(const QImage& image, const QRect& rect, QWidget* view) override;

    /// The keys held down at this moment, together with those a menu holds.
    Qt::KeyboardModifiers modifierFlags() const override;
    QString localizedDescription(const Date& date) const override;

    /// Keys that count as held until changed; for desktops whose window manager keeps Alt for itself.
    void setHeldModifiers(Qt::KeyboardModifiers modifiers) { m_heldModifiers = modifiers; }
    Qt::KeyboardModifiers heldModifiers() const { return m_heldModifiers; }

private:
    Qt::KeyboardModifiers m_heldModifiers = Qt::NoModifier;
    SharedPicture m_sharedPicture;
};

/// What the sharing picker offers for an image: copy it, save it, mail it, open it in another program; what no program
/// can do is greyed, with the reason. The menu deletes itself when it closes; it *borrows* the interface and the
/// picture.
QMenu* makeSharingMenu(const QImage& image, KTVUserInterface* userInterface, SharedPicture& sharedPicture,
                       QWidget* parent);

}  // namespace plotix
