#pragma once

#include <QtGui/QUndoCommand>

#include <functional>

class QUndoStack;

/// A change of the site's agents, properties or records, for the undo stack. It was made already when it is pushed.
///
/// *Owned* by the stack, which it *borrows*; what it calls borrows the window, which ends after the stack. Main thread
/// only.
namespace plotix {

class EditCommand : public QUndoCommand {
public:
    enum class Result {
        Done,
        NotDone,  ///< failed or cancelled: everything is as it was, and it may be tried again
        Never     ///< it cannot be done any more: the command leaves the stack
    };
    using Change = std::function<Result()>;

    EditCommand(const QString& text, QUndoStack& stack, Change again, Change back);

    void redo() override;
    void undo() override;

private:
    void take(Result result);
    void countBack();

    QUndoStack& m_stack;
    Change m_again, m_back;
    bool m_isMade = true;
};

}  // namespace plotix
