#pragma once

#include <QtWidgets/QDialog>

#include <optional>
#include <vector>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

/// Asks for a line and the limit that its times above, or below, are counted by.
///
/// Deletes itself when it is closed; its parent *owns* it. Main thread only.
namespace plotix {

class LimitDialog : public QDialog {
    Q_OBJECT
public:
    enum class Side { Above, Below };
    /// A line that can be asked about. A value.
    struct Line {
        QString key, name, unitSymbol;  ///< the symbol may be empty
        double limit = 0;               ///< offered at first, in its unit
    };

    /// `key` is the line offered at first. Requires: there are lines.
    LimitDialog(Side side, std::vector<Line> lines, const QString& key, QWidget* parent);

signals:
    void limitGiven(const QString& key, double limit);

private:
    void offerLimit();
    void judge();
    void take();
    std::optional<double> typed() const;

    std::vector<Line> m_lines;
    QComboBox* m_line;
    QLineEdit* m_limit;
    QLabel* m_unit;
    QDialogButtonBox* m_buttons;
};

}  // namespace plotix
