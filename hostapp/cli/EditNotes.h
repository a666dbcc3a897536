#pragma once

#include "hostapp/document/AnnotationEditing.h"
#include "hostapp/document/SiteDocument.h"

#include <optional>

namespace CLI {
class App;
}

/// Notes on the command line: written, changed and removed by `plotix edit`. Main thread only.
namespace plotix {

struct NoteWish {
    QStringList note;     ///< TIME or TIME .. TIME, then the text
    QStringList changed;  ///< NUMBER, then the text
    qint64 removed = 0;   ///< NUMBER
    QString author;

    int wishes() const { return int{!note.isEmpty()} + int{!changed.isEmpty()} + int{removed != 0}; }
};

/// The options --note, --change-note, --remove-note and --author; the wish must live until the words are parsed.
void addNoteOptions(CLI::App* command, NoteWish& wish);

/// What is wrong with these options together; nothing: they fit.
std::optional<QString> contradictionIn(const NoteWish& wish);

/// Throws ReportableError. Without a property a new note is about all; `agent` is asked for it only where one is named.
EditOutcome editNotes(const NoteWish& wish, const SiteDocument& document, const QString& site, const QString& agent,
                      const QString& property);

}  // namespace plotix
