#include "hostapp/window/EditCommand.h"

#include <QtCore/QTimer>
#include <QtGui/QUndoStack>

namespace plotix {

EditCommand::EditCommand(const QString& text, QUndoStack& stack, Change again, Change back)
    : QUndoCommand(text), m_stack(stack), m_again(std::move(again)), m_back(std::move(back))
{
}

void EditCommand::redo()
{
    if (!m_isMade)
        take(m_again());
}

void EditCommand::undo()
{
    if (m_isMade)
        take(m_back());
}

void EditCommand::take(Result result)
{
    switch (result) {
    case Result::Done: m_isMade = !m_isMade; break;
    case Result::NotDone: countBack(); break;
    case Result::Never: setObsolete(true); break;
    }
}

/// The stack counts a step as taken, whatever happened. It takes the step back, which then finds nothing to do; posted,
/// since it is in the middle of counting.
void EditCommand::countBack()
{
    const auto isAt = [&stack = m_stack, command = this](int index) {
        return index >= 0 && index < stack.count() && stack.command(index) == command;
    };
    QTimer::singleShot(0, &m_stack, [&stack = m_stack, isMade = m_isMade, isAt] {
        if (isMade && isAt(stack.index()))
            stack.redo();
        else if (!isMade && isAt(stack.index() - 1))
            stack.undo();
    });
}

}  // namespace plotix
