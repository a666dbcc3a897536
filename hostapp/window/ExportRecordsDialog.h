#pragma once

#include "hostapp/exchange/Export.h"

#include <QtWidgets/QDialog>

#include <utility>

class QCheckBox;
class QComboBox;
class QDateTimeEdit;
class QRadioButton;

/// Asks which records of an agent go into a file, and in which form. Main thread only.
namespace plotix {

class ExportRecordsDialog : public QDialog {
    Q_OBJECT
public:
    using Span = std::pair<double, double>;  ///< seconds since 1970-01-01 UTC, both included

    /// `visible` is the span that the trend in front shows, if there is one. Without it all records are chosen.
    ExportRecordsDialog(const QString& agent, const std::optional<Span>& visible, QWidget* parent = nullptr);

    std::optional<Span> span() const;  ///< nothing: all records
    ExportForm form() const;
    QString fileType() const;  ///< "csv" or "xlsx"

    void chooseAll();
    void chooseSpan(const Span& span);
    void chooseWorkbook();
    void chooseSemicolons();

    void accept() override;  ///< stays open when the span is reversed

private:
    void adjust();
    QWidget* makeSpanRow();

    std::optional<Span> m_visible;
    // All owned by the dialog.
    QRadioButton *m_all, *m_shown, *m_chosen;
    QDateTimeEdit *m_from, *m_to;
    QComboBox *m_format, *m_decimal, *m_clock;
    QCheckBox* m_guard;
};

}  // namespace plotix
