#pragma once

#include "hostapp/document/SiteAnnotations.h"

#include <QtWidgets/QDialog>

#include <optional>
#include <vector>

class QComboBox;
class QDialogButtonBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QToolButton;

/// Asks for the limits of a property: a row for each, with name, side, value and severity. Says while typing what is
/// wrong.
///
/// It stores nothing: the caller does. Main thread only.
namespace plotix {

class LimitsDialog : public QDialog {
    Q_OBJECT
public:
    /// `unit`: in which the property is shown, and in which values are typed. Without limits there is a row for one.
    LimitsDialog(const QString& propertyName, const QString& unit, const std::vector<SiteLimit>& limits,
                 QWidget* parent = nullptr);

    /// As they stand in the rows; one whose value was left as it is keeps it to the last bit, in its own unit.
    std::vector<SiteLimit> limits() const;

private:
    struct Row {
        SiteLimit before;  // with id 0 for one that is new
        QString shown;     // the value as it was put into the field
        QLineEdit* name;
        QComboBox* side;
        QLineEdit* value;
        QLabel* unit;
        QComboBox* severity;
        QToolButton* remove;
    };
    void addRow(const SiteLimit& limit, bool isTyped);
    void addNewRow();
    void removeRow(const QToolButton* button);
    SiteLimit limitOf(const Row& row) const;
    QString suggestedName() const;
    QString problem() const;
    void check();

    QString m_unit;
    std::vector<Row> m_rows;
    int m_gridRows = 1;  // used so far, headings included
    // All owned by the dialog.
    QGridLayout* m_grid;
    QLabel* m_none;
    QLabel* m_problem;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
