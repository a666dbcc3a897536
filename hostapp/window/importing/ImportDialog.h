#pragma once

#include "hostapp/exchange/ImportPreview.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>

#include <optional>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QTableView;

/// Asks which file to import, into which agent, and how it is to be read; shows what the import would take of it: the
/// columns with their names and units, what is left out and why, and the first rows as understood.
///
/// The file is read again on a worker thread shortly after each change. A problem stands above, in words, and the field
/// that settles it is marked and focused. Main thread only.
namespace plotix {

class ColumnChoices;
class FirstRows;
class PreviewReader;
class ReadingFields;

class ImportDialog : public QDialog {
    Q_OBJECT
public:
    /// `agentNames` are offered beside a new name, which is the file's base name until the user writes another.
    ImportDialog(const QStringList& agentNames, QWidget* parent = nullptr);

    /// `done` code: this file is left out, and the next one's turn comes.
    static constexpr int kSkipped = 2;

    /// How many more files wait to be asked for; with any, this one can be skipped, or stand for all.
    void setMoreToCome(int files);
    void setStandsForAll(bool stands);
    bool standsForAll() const;  ///< the others are to be read in the same way, without asking

    void setFile(const QString& path);
    QString file() const;
    void setOptions(const ImportOptions& options);  ///< after the file; `only` and `replace` have no field
    ImportOptions options() const;
    /// Whether the agent has the file's name, because the user has not named one.
    bool namesAgentByFile() const;

    /// Why the import of this file, so read, was refused. Stands until the user changes something.
    void showRefusal(const ImportFinding& finding);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void build();
    QWidget* buildTop();
    QWidget* buildTables();
    QWidget* buildSide();
    QWidget* buildProblem();
    void buildButtons();
    void connectAll();

    void chooseFile();
    void fileDidChange();
    void didChange();
    void readAgain();
    void showPreview(const ImportPreview& preview);
    void showState();
    void showProblem(const QString& text, ImportOption option);
    void showHowMany();
    void focusProblem();
    const ImportFinding* problem() const;  ///< null: none is known

    // All owned by the dialog.
    QLineEdit* m_file;
    QComboBox* m_agent;
    ReadingFields* m_fields;
    ColumnChoices* m_columns;
    FirstRows* m_rows;
    PreviewReader* m_reader;
    QScrollArea* m_side = nullptr;
    QTableView *m_columnView = nullptr, *m_rowView = nullptr;
    QWidget* m_problemRow = nullptr;
    QLabel *m_problem = nullptr, *m_notes = nullptr, *m_howMany = nullptr;
    QCheckBox* m_all;
    QDialogButtonBox* m_buttons = nullptr;
    QPushButton *m_import = nullptr, *m_skip = nullptr;

    QString m_proposedAgent;  ///< replaced when the file changes, unless the user wrote something else
    QTimer m_pause;           ///< runs out when the user has changed nothing for a moment
    ImportOptions m_asked;    ///< the options of the preview asked for last
    std::optional<ImportPreview> m_preview;
    bool m_isCurrent = false;  ///< the preview is of the file and the options there are now
    bool m_mustFocus = false;  ///< the file has just been chosen: its problem is the next thing to see
    std::optional<ImportFinding> m_refusal;
};

}  // namespace plotix
