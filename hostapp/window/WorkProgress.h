#pragma once

#include <QtCore/QString>

#include <functional>

class QProgressDialog;
class QWidget;

/// Long work that a window waits for without freezing. Free functions; main thread only.
namespace plotix {

/// Called with 0 to 1 by the work, on its thread; answers false once the user cancels.
using WorkProgress = std::function<bool(double fraction)>;

/// Runs the work on a thread of its own and returns when it is done. Short work is simply waited for; after a third of
/// a second a dialog over all windows shows the progress and can cancel. What the work throws is thrown here. The
/// parent must not end meanwhile.
void workWithProgress(const QString& label, QWidget* parent,
                      const std::function<void(const WorkProgress& progress)>& work);

/// Shows the dialog's label as it is, whatever names stand in it.
void showLabelPlainly(QProgressDialog& dialog);

}  // namespace plotix
