#pragma once

#include "hostapp/site/TrendSpans.h"

#include <QtWidgets/QDialog>

class QDateTimeEdit;
class QRadioButton;

/// Asks which span of a trend goes into a case. Main thread only.
namespace plotix {

class SaveCaseDialog : public QDialog {
    Q_OBJECT
public:
    /// The marked span is chosen where there is one, else the visible one.
    SaveCaseDialog(const QString& trend, const MomentSpan& visible, const std::optional<MomentSpan>& marked,
                   QWidget* parent = nullptr);

    MomentSpan span() const;
    void chooseSpan(const MomentSpan& span);

    void accept() override;  ///< stays open when the span is reversed

private:
    QWidget* makeSpanRow();

    MomentSpan m_visible;
    std::optional<MomentSpan> m_marked;
    // All owned by the dialog.
    QRadioButton *m_shown, *m_between, *m_chosen;
    QDateTimeEdit *m_from, *m_to;
};

}  // namespace plotix
