#pragma once

#include "hostapp/document/ChangedMeanwhile.h"

class QDialog;

/// Tells who typed something that somebody else has changed since. Free functions; main thread only.
namespace plotix {

/// What the other one made of it, and what OK and Cancel do now.
QString conflictText(const ChangedMeanwhile& changed);

/// Stands at the top of the dialog, in place of one that stood there before; what was typed stays. Requires: the dialog
/// has a form or a column as its layout.
void showConflict(QDialog& dialog, const ChangedMeanwhile& changed);

}  // namespace plotix
