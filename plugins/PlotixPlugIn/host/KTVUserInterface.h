#pragma once

#include "base/Date.h"
#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QRect>
#include <QtCore/QStringList>
#include <QtGui/QImage>

#include <functional>
#include <memory>
#include <optional>

class QWidget;

/// An alert with one "OK" button.
struct KTVAlert {
    enum class Style { Default = 0, Informational = 1, Critical = 2 };
    QString messageText;
    QString informativeText;
    Style style = Style::Default;
};

/// An edge of a rectangle in a view's own coordinates, whose y grows downward: minimum y is the upper edge.
enum class KTVRectEdge { MinX, MinY, MaxX, MaxY };

/// Is told what was chosen in a sharing picker. The picker holds it *weakly*. Main thread only.
class KTVHOST_EXPORT KTVSharingPickerDelegate {
public:
    virtual ~KTVSharingPickerDelegate();
    virtual void sharingPickerDidChoose(const QString& service);  ///< the service's title; the base does nothing
};

/// Alerts, save panel, sharing picker, and the keys held down: what the plug-in asks of the user's desktop.
///
/// A seam: windowed hosts show real panels, headless ones write to stderr and return, tests record. Main thread only.
class KTVHOST_EXPORT KTVUserInterface {
public:
    virtual ~KTVUserInterface();

    /// Shows the alert as a sheet on `window` and returns at once; the handler runs when it is dismissed.
    /// A null window opens it without a parent, never blocking.
    virtual void beginSheet(const KTVAlert& alert, QWidget* window, std::function<void()> completionHandler) = 0;

    /// Shows the alert application-modally and returns when it is dismissed.
    virtual void runModal(const KTVAlert& alert) = 0;

    /// Asks where to save; the chosen path, or nothing when cancelled.
    virtual std::optional<QString> runSavePanel(const QStringList& allowedFileTypes) = 0;

    /// Offers what can be done with an image, at an edge of `rect` in `view`; returns at once.
    virtual void showSharingPicker(const QImage& image, const std::weak_ptr<KTVSharingPickerDelegate>& delegate,
                                   const QRect& rect, QWidget* view, KTVRectEdge preferredEdge) = 0;

    /// The modifier keys of the current event, not of the keyboard, which other programs use too; and in a gesture
    /// those that a menu command of its window stands for. Option is Qt::AltModifier.
    virtual Qt::KeyboardModifiers modifierFlags() const = 0;

    /// A date as text for reports, in the user's locale and zone.
    virtual QString localizedDescription(const plotix::Date& date) const = 0;
};
