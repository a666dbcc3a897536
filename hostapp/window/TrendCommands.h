#pragma once

#include "hostapp/window/SiteWindowController.h"

#include <QtGui/QUndoCommand>

/// What the user did to the list of trends, so that it can be undone: delete, rename, move.
///
/// A command *borrows* the controller and *shares* the plug-in: the undo stack is cleared before the controller ends.
/// Main thread only.
namespace plotix {

/// Takes a trend out of the site. Undo puts it back at its row, with its state, in its own window if it had one.
class DeleteTrendCommand : public QUndoCommand {
public:
    DeleteTrendCommand(SiteWindowController& controller, KTVPlugInPtr plugIn);
    void redo() override;
    void undo() override;

private:
    SiteWindowController& m_controller;
    KTVPlugInPtr m_plugIn;
    int m_row = 0;
    bool m_inOwnWindow = false;
    QByteArray m_windowGeometry;
};

/// Renames a trend. The list has changed the title already, so the first `redo` does nothing.
class RenameTrendCommand : public QUndoCommand {
public:
    RenameTrendCommand(KTVPlugInPtr plugIn, QString before, QString after);
    void redo() override { m_plugIn->setTitle(m_after); }
    void undo() override { m_plugIn->setTitle(m_before); }

private:
    KTVPlugInPtr m_plugIn;
    QString m_before, m_after;
};

/// Moves a trend. The list has moved the row already, so the first `redo` does nothing.
class MoveTrendCommand : public QUndoCommand {
public:
    MoveTrendCommand(SiteWindowController& controller, KTVPlugInPtr plugIn, int from, int to);
    void redo() override { moveTo(m_to); }
    void undo() override { moveTo(m_from); }

private:
    void moveTo(int row);

    SiteWindowController& m_controller;
    KTVPlugInPtr m_plugIn;
    int m_from, m_to;
};

}  // namespace plotix
