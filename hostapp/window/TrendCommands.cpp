#include "hostapp/window/TrendCommands.h"

#include <QtCore/QCoreApplication>

namespace plotix {

namespace {

class TrendCommandText {
    Q_DECLARE_TR_FUNCTIONS(TrendCommandText)
};

}  // namespace

DeleteTrendCommand::DeleteTrendCommand(SiteWindowController& controller, KTVPlugInPtr plugIn)
    : QUndoCommand(TrendCommandText::tr("Delete “%1”").arg(titleOf(*plugIn))),
      m_controller(controller),
      m_plugIn(std::move(plugIn))
{
}

void DeleteTrendCommand::redo()
{
    m_row = m_controller.sourceList().rowOf(m_plugIn.get());
    const SeparateWindow* window = m_controller.separateWindowOf(m_plugIn.get());
    m_inOwnWindow = window != nullptr;
    m_windowGeometry = window ? window->saveGeometry() : QByteArray();
    m_controller.removePlugIn(m_plugIn);
}

void DeleteTrendCommand::undo()
{
    m_controller.restorePlugIn(m_plugIn, m_row);
    if (m_inOwnWindow)
        m_controller.openInSeparateWindow(m_plugIn, m_windowGeometry);
}

RenameTrendCommand::RenameTrendCommand(KTVPlugInPtr plugIn, QString before, QString after)
    : QUndoCommand(TrendCommandText::tr("Rename to “%1”").arg(after)),
      m_plugIn(std::move(plugIn)),
      m_before(std::move(before)),
      m_after(std::move(after))
{
}

MoveTrendCommand::MoveTrendCommand(SiteWindowController& controller, KTVPlugInPtr plugIn, int from, int to)
    : QUndoCommand(TrendCommandText::tr("Move “%1”").arg(titleOf(*plugIn))),
      m_controller(controller),
      m_plugIn(std::move(plugIn)),
      m_from(from),
      m_to(to)
{
}

void MoveTrendCommand::moveTo(int row)
{
    SourceListModel& list = m_controller.sourceList();
    list.move(list.rowOf(m_plugIn.get()), row);
}

}  // namespace plotix
