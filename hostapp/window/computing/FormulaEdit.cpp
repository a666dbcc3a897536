#include "hostapp/window/computing/FormulaEdit.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QScrollBar>

namespace plotix {

namespace {

constexpr int kTextRole = Qt::UserRole + 1;
constexpr int kLines = 3;
constexpr int kMostShown = 10;

bool isReturn(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

FormulaEdit::FormulaEdit(QWidget* parent)
    : QPlainTextEdit(parent), m_completer(new QCompleter(this)), m_names(new QStandardItemModel(this))
{
    setObjectName(QStringLiteral("formula"));
    setAccessibleName(tr("Formula"));
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setPlaceholderText(tr("such as Supply - Return, or mean(\"Air temperature\", 1 h)"));
    QFont font = this->font();
    font.setFamily(QStringLiteral("monospace"));
    font.setStyleHint(QFont::TypeWriter);
    setFont(font);
    m_completer->setModel(m_names);
    m_completer->setWidget(this);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setMaxVisibleItems(kMostShown);
    m_completer->popup()->setObjectName(QStringLiteral("formulaCompletions"));
    connect(m_completer, qOverload<const QModelIndex&>(&QCompleter::activated), this, &FormulaEdit::insert);
}

void FormulaEdit::setDirectory(std::shared_ptr<const FormulaDirectory> directory, qint64 agent)
{
    m_directory = std::move(directory);
    m_agent = agent;
}

QString FormulaEdit::formula() const
{
    QString text = toPlainText();
    return text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

void FormulaEdit::showProblem(const std::optional<FormulaProblem>& problem)
{
    QList<QTextEdit::ExtraSelection> marks;
    if (problem && problem->kind != FormulaProblem::Kind::Empty) {
        QTextEdit::ExtraSelection mark;
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(Qt::red);
        mark.cursor = textCursor();
        const int end = static_cast<int>(toPlainText().size());
        // At the end there is nothing to underline but what stands before it.
        const int first = qMin(problem->position, qMax(0, end - 1));
        mark.cursor.setPosition(first);
        mark.cursor.setPosition(qMin(end, qMax(first + 1, problem->position + problem->length)),
                                QTextCursor::KeepAnchor);
        marks << mark;
    }
    setExtraSelections(marks);
}

QSize FormulaEdit::sizeHint() const
{
    const int margins = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return {QPlainTextEdit::sizeHint().width(), kLines * fontMetrics().lineSpacing() + margins};
}

bool FormulaEdit::isCompleting() const
{
    return m_completer->popup()->isVisible();
}

void FormulaEdit::keyPressEvent(QKeyEvent* event)
{
    const bool isTaken = isReturn(*event) || event->key() == Qt::Key_Escape || event->key() == Qt::Key_Tab ||
                         event->key() == Qt::Key_Backtab;
    if (isCompleting() && isTaken) {
        event->ignore();  // the list's own
        return;
    }
    if (isReturn(*event)) {
        emit accepted();
        return;
    }
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier) {
        complete(CompleteNothing::WithEverything);
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
    const bool isTyped = !event->text().isEmpty() && event->text().front().isPrint();
    if (isTyped || (event->key() == Qt::Key_Backspace && isCompleting()))
        complete(CompleteNothing::WithNothing);
    else if (isCompleting() && !event->text().isEmpty())
        m_completer->popup()->hide();
}

void FormulaEdit::focusOutEvent(QFocusEvent* event)
{
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        m_completer->popup()->hide();
    QPlainTextEdit::focusOutEvent(event);
}

void FormulaEdit::complete(CompleteNothing nothing)
{
    if (!m_directory)
        return;
    const FormulaCompletions found =
        completionsAt(toPlainText(), textCursor().position(), *m_directory, m_agent, nothing);
    const QString written = toPlainText().mid(found.position, found.length);
    m_names->clear();
    for (const FormulaCompletion& candidate : found.candidates) {
        auto* item = new QStandardItem(
            candidate.detail.isEmpty() ? candidate.label : tr("%1  –  %2").arg(candidate.label, candidate.detail));
        item->setData(candidate.text, kTextRole);
        m_names->appendRow(item);
    }
    m_position = found.position;
    m_length = found.length;
    // What is written out already needs no list.
    if (found.candidates.empty() || (found.candidates.size() == 1 && found.candidates.front().text == written)) {
        m_completer->popup()->hide();
        return;
    }
    QRect place = cursorRect();
    place.setWidth(m_completer->popup()->sizeHintForColumn(0) +
                   m_completer->popup()->verticalScrollBar()->sizeHint().width() + 2 * place.height());
    m_completer->complete(place);
    m_completer->popup()->setCurrentIndex(m_completer->completionModel()->index(0, 0));
}

void FormulaEdit::insert(const QModelIndex& chosen)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(m_position);
    cursor.setPosition(m_position + m_length, QTextCursor::KeepAnchor);
    cursor.insertText(chosen.data(kTextRole).toString());
    setTextCursor(cursor);
    m_completer->popup()->hide();
}

}  // namespace plotix
