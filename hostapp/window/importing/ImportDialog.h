#pragma once

#include "hostapp/exchange/ImportOptions.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// Asks which text file to import, and into which agent. Main thread only.
namespace plotix {

class ImportDialog : public QDialog {
    Q_OBJECT
public:
    /// `agentNames` are offered beside a new name, which is the file's base name until the user writes another.
    ImportDialog(const QStringList& agentNames, QWidget* parent = nullptr);

    /// `done` code: this file is left out, and the next one's turn comes.
    static constexpr int kSkipped = 2;

    /// How many more files wait to be asked for; with any, this one can be skipped.
    void setMoreToCome(int files);

    void setFile(const QString& path);
    QString file() const;
    ImportOptions options() const;

private:
    void chooseFile();
    void fileDidChange();
    void updateImport();

    // All owned by the dialog.
    QLineEdit* m_file;
    QComboBox* m_agent;
    QLineEdit* m_where;
    QLineEdit* m_timeColumn;
    QLineEdit* m_timeZone;
    QComboBox* m_dateOrder;
    QCheckBox* m_skipBadRows;
    QDialogButtonBox* m_buttons;
    QPushButton* m_import;
    QString m_proposedAgent;  ///< replaced when the file changes, unless the user wrote something else
};

}  // namespace plotix
