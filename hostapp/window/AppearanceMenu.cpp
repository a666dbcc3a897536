#include "hostapp/window/AppearanceMenu.h"

#include "hostapp/window/Appearance.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QActionGroup>
#include <QtWidgets/QMenu>

namespace plotix {

namespace {

class AppearanceText {
    Q_DECLARE_TR_FUNCTIONS(AppearanceText)
};

}  // namespace

void fillAppearanceMenu(QMenu* menu)
{
    auto* group = new QActionGroup(menu);
    const std::pair<ColourScheme, QString> choices[] = {
        {ColourScheme::LikeDesktop, AppearanceText::tr("Like the &Desktop")},
        {ColourScheme::Light, AppearanceText::tr("&Light")},
        {ColourScheme::Dark, AppearanceText::tr("D&ark")}};
    for (const auto& [scheme, text] : choices) {
        QAction* action = group->addAction(menu->addAction(text));
        action->setCheckable(true);
        action->setData(static_cast<int>(scheme));
        QObject::connect(action, &QAction::triggered, menu, [scheme = scheme] { chooseColourScheme(scheme); });
    }
    const auto showChoice = [group] {
        for (QAction* action : group->actions())
            action->setChecked(action->data().toInt() == static_cast<int>(chosenColourScheme()));
    };
    QObject::connect(menu, &QMenu::aboutToShow, group, showChoice);
    showChoice();
}

}  // namespace plotix
