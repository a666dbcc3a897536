#pragma once

#include "hostapp/document/SiteAnnotations.h"

#include <QtWidgets/QDialog>

#include <utility>
#include <vector>

class QCheckBox;
class QDateTimeEdit;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;

/// Asks for a note: its time or span, author, text, and which properties it is about. Says while typing what is wrong.
///
/// It stores nothing: the caller does. Main thread only.
namespace plotix {

class NoteDialog : public QDialog {
    Q_OBJECT
public:
    /// Properties by id, with the names to be shown, in the order of the list.
    using Properties = std::vector<std::pair<qint64, QString>>;
    NoteDialog(const SiteNote& note, const Properties& properties, QWidget* parent = nullptr);

    /// As it stands in the fields; times that were left as they are keep their fractions of a second, and properties
    /// that are not in the list stay named.
    SiteNote note() const;

private:
    void layOutFields();
    void fillProperties(const Properties& properties);
    QString problem() const;
    void check();

    SiteNote m_before;
    // All owned by the dialog.
    QPlainTextEdit* m_text;
    QDateTimeEdit* m_from;
    QCheckBox* m_isSpan;
    QDateTimeEdit* m_to;
    QLineEdit* m_author;
    QCheckBox* m_isAboutAll;
    QListWidget* m_properties;
    QLabel* m_problem;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
