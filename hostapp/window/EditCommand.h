#pragma once

#include <QtGui/QUndoCommand>

#include <functional>
#include <utility>

/// A change of the site's agents, properties or records, for the undo stack. It was made already when it is pushed.
///
/// *Owned* by the stack; what it calls *borrows* the window, which ends after the stack. Main thread only.
namespace plotix {

class EditCommand : public QUndoCommand {
public:
    EditCommand(const QString& text, std::function<void()> again, std::function<void()> back)
        : QUndoCommand(text), m_again(std::move(again)), m_back(std::move(back))
    {
    }
    void redo() override
    {
        if (std::exchange(m_isMade, true))
            m_again();
    }
    void undo() override { m_back(); }

private:
    std::function<void()> m_again, m_back;
    bool m_isMade = false;
};

}  // namespace plotix
