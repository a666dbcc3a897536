#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include "plugins/PlotixPlugIn/host/KTVBundle.h"

namespace plotix {

namespace {

constexpr auto kMenu = "menu";

}  // namespace

ReadingPart::~ReadingPart() = default;

QString menuOf(const QAction& action)
{
    return action.property(kMenu).toString();
}

void setMenuOf(QAction& action, const QString& title)
{
    action.setProperty(kMenu, title);
}

QString localizedText(const char* key)
{
    return KTVBundle::mainBundle()->localizedString(QString::fromUtf8(key));
}

}  // namespace plotix
