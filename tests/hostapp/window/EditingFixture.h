#pragma once

#include "hostapp/window/DesktopUserInterface.h"
#include "hostapp/window/HelpWindow.h"
#include "hostapp/window/PropertyListView.h"
#include "hostapp/window/SiteWindow.h"
#include "tests/support/stubsite/ScratchSite.h"
#include "tests/support/stubsite/StubTrend.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QProgressDialog>

#include <gtest/gtest.h>

/// A site that is changed from its window.
class EditingTest : public testing::Test {
protected:
    EditingTest() : station(site.addStation())
    {
        window = std::make_unique<plotix::SiteWindow>(site.document, plotix::WindowServices{&module, &desktop, &help});
        window->show();
    }
    void TearDown() override
    {
        writer.reset();
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    plotix::PropertyListView& list() { return *window->findChild<plotix::PropertyListView*>("propertyList"); }
    QStringList names() const
    {
        QStringList found;
        for (const auto& property : station->siteProperties())
            found << property->name();
        return found;
    }
    /// Chooses the entry of the property's menu; an entry "A/B" is in a menu of its own.
    void choose(int property, const QString& entry)
    {
        const std::unique_ptr<QMenu> menu(list().makeMenuFor(station->siteProperties().at(property)));
        const QMenu* inside = menu.get();
        const QStringList path = entry.split('/');
        for (const QString& step : path)
            for (QAction* action : inside->actions())
                if (action->text().remove('&') == step) {
                    inside = action->menu();
                    if (!inside) {
                        action->trigger();
                        return;
                    }
                    break;
                }
        ADD_FAILURE() << "there is no " << entry.toStdString();
    }
    /// Answers the next modal dialog.
    template <class Dialog, class Answer>
    void answerNext(Answer answer)
    {
        QTimer::singleShot(0, window.get(), [answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            answer(dialog);
        });
    }

    /// Answers the dialog that stands again, as somebody else was first; keeps what it says of that.
    template <class Dialog, class Answer>
    void answerAfterConflict(Answer answer)
    {
        auto* poll = new QTimer(window.get());
        QObject::connect(poll, &QTimer::timeout, window.get(), [this, poll, answer] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            const auto* notice = dialog ? dialog->template findChild<QLabel*>("changedMeanwhile") : nullptr;
            if (!notice || !notice->isVisible())
                return;
            poll->stop();
            conflict = notice->text();
            answer(dialog);
        });
        poll->start(10);
    }
    QString conflict;

    /// Makes the next change wait for another writer until its progress is on the screen, and looks at that.
    void duringTheNextChange(std::function<void(QProgressDialog&)> look)
    {
        site.store(*station, {1, 2, 3});
        writer = site.document->records()->begin();
        auto* poll = new QTimer(window.get());
        QObject::connect(poll, &QTimer::timeout, window.get(), [this, poll, look = std::move(look)] {
            auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            if (!progress)
                return;
            poll->stop();
            poll->deleteLater();
            look(*progress);
            writer.reset();
        });
        poll->start(10);
    }

    ScratchSite site;
    std::shared_ptr<plotix::SiteAgent> station;
    std::unique_ptr<plotix::RecordTransaction> writer;
    StubModule module;
    plotix::DesktopUserInterface desktop;
    plotix::HelpManager help;
    std::unique_ptr<plotix::SiteWindow> window;
};
