#pragma once

#include "hostapp/exchange/ImportOptions.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
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
    QPushButton* m_import;
    QString m_proposedAgent;  ///< replaced when the file changes, unless the user wrote something else
};

}  // namespace plotix
