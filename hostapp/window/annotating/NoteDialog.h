#pragma once

#include "hostapp/document/SiteAnnotations.h"

#include <QtCore/QTimeZone>
#include <QtWidgets/QDialog>

#include <utility>
#include <vector>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;

/// Asks for a note: its time or span, author, text, and which properties it is about. Says while typing what is wrong.
///
/// It stores nothing: the caller does. Main thread only.
namespace plotix {

class MomentEdit;

class NoteDialog : public QDialog {
    Q_OBJECT
public:
    /// Properties by id, with the names to be shown, in the order of the list.
    using Properties = std::vector<std::pair<qint64, QString>>;
    /// Times are by the clocks of `zone`; an invalid one is the user's.
    NoteDialog(const SiteNote& note, const Properties& properties, QWidget* parent = nullptr,
               const QTimeZone& zone = {});

    /// As it stands in the fields; times that were left as they are keep their fractions of a second, and properties
    /// that are not in the list stay named.
    SiteNote note() const;

    /// What was written is not dropped unasked.
    void reject() override;

private:
    void layOutFields(const QTimeZone& zone);
    void fillProperties(const Properties& properties);
    QString problem() const;
    void check();
    void askWhatBecomesOfTheText();

    SiteNote m_before;
    // All owned by the dialog.
    QPlainTextEdit* m_text;
    MomentEdit* m_from;
    QCheckBox* m_isSpan;
    MomentEdit* m_to;
    QLineEdit* m_author;
    QCheckBox* m_isAboutAll;
    QListWidget* m_properties;
    QLabel* m_problem;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
