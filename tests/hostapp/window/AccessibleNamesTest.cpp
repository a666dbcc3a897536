#include "hostapp/window/ExportPictureDialog.h"
#include "hostapp/window/SiteDetailsDialog.h"
#include "hostapp/window/importing/ImportDialog.h"
#include "tests/hostapp/window/StubbedServices.h"
#include "tests/support/stubsite/ScratchSite.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QMenuBar>

namespace {

/// As a screen reader does: the name given, or else the text on the control.
QString spokenName(QWidget& widget)
{
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&widget);
    return told ? told->text(QAccessible::Name) : QString();
}

QList<QWidget*> focusableWidgets(const QWidget& window)
{
    QList<QWidget*> widgets;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->focusPolicy() != Qt::NoFocus && widget->isVisible() && !widget->focusProxy() &&
            !qobject_cast<QAbstractScrollArea*>(widget->parentWidget()))
            widgets.append(widget);
    return widgets;
}

TEST(AccessibleNamesTest, EveryFocusableControlOfTheSiteWindowHasOne)
{
    ScratchSite site;
    site.addStation();
    StubbedServices stubs;
    plotix::SiteWindow window(site.document, stubs.services());
    window.show();
    const QList<QWidget*> widgets = focusableWidgets(window);
    EXPECT_GE(widgets.size(), 4);  // two lists, and the buttons of the empty state
    for (QWidget* widget : widgets)
        EXPECT_FALSE(spokenName(*widget).trimmed().isEmpty())
            << widget->metaObject()->className() << ' ' << qPrintable(widget->objectName());
}

void expectNames(QWidget& window, qsizetype atLeast)
{
    window.show();
    const QList<QWidget*> widgets = focusableWidgets(window);
    EXPECT_GE(widgets.size(), atLeast);
    for (QWidget* widget : widgets)
        EXPECT_FALSE(spokenName(*widget).trimmed().isEmpty())
            << widget->metaObject()->className() << ' ' << qPrintable(widget->objectName());
}

TEST(AccessibleNamesTest, EveryFocusableControlOfTheDialogsHasOne)
{
    plotix::ImportDialog import(QStringList("Station"));
    expectNames(import, 8);
    plotix::ExportPictureDialog picture(QStringLiteral("Week"), plotix::ExportPictureDialog::Table::Offered);
    expectNames(picture, 8);
    plotix::SiteDetailsDialog details(QStringLiteral("Hill"), {}, {});
    expectNames(details, 5);
    plotix::HelpWindow help;
    expectNames(help, 3);
}

}  // namespace
