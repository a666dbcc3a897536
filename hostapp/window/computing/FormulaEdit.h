#pragma once

#include "hostapp/formulas/FormulaCompletion.h"
#include "hostapp/formulas/FormulaProblem.h"

#include <QtWidgets/QPlainTextEdit>

#include <memory>
#include <optional>

class QCompleter;
class QStandardItemModel;

/// Where a formula is written: a few lines of text, names completed while typing (Ctrl+Space: all there are), what is
/// wrong underlined. Return ends the dialog it is in, Tab goes on. Main thread only.
namespace plotix {

class FormulaEdit : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit FormulaEdit(QWidget* parent = nullptr);

    /// What names may mean; `agent`: the one whose properties need no agent's name.
    void setDirectory(std::shared_ptr<const FormulaDirectory> directory, qint64 agent);

    QString formula() const;  ///< on one line, as long as the text
    /// Underlines the place; nothing: all is well.
    void showProblem(const std::optional<FormulaProblem>& problem);

    QSize sizeHint() const override;

signals:
    void accepted();  ///< Return, while no list is open

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void complete(CompleteNothing nothing);
    void insert(const QModelIndex& chosen);
    bool isCompleting() const;

    std::shared_ptr<const FormulaDirectory> m_directory;
    qint64 m_agent = 0;
    QCompleter* m_completer;           // owned by this
    QStandardItemModel* m_names;       // likewise
    int m_position = 0, m_length = 0;  // what a completion replaces
};

}  // namespace plotix
