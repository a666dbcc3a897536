#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

KTVUserInterface::~KTVUserInterface() = default;

KTVSharingPickerDelegate::~KTVSharingPickerDelegate() = default;

void KTVSharingPickerDelegate::sharingPickerDidChoose(const QString& /*service*/) {}
