#include "hostapp/window/ReportChoice.h"

#include <QtCore/QSettings>

namespace plotix {

namespace {
constexpr auto kClassicKey = "Report/classic";  // stored: never change
}

bool wantsClassicReport()
{
    return QSettings().value(QLatin1String(kClassicKey), false).toBool();
}

void rememberClassicReport(bool wanted)
{
    QSettings().setValue(QLatin1String(kClassicKey), wanted);
}

}  // namespace plotix
