#pragma once

#include "hostapp/window/SpanChoice.h"

#include <QtCore/QTimeZone>
#include <QtWidgets/QDialog>

class QRadioButton;

/// Asks which span of a trend goes into a case. Main thread only.
namespace plotix {

class SaveCaseDialog : public QDialog {
    Q_OBJECT
public:
    /// The marked span is chosen where there is one, else the visible one. Times are by the clocks of `zone`; an
    /// invalid one is the user's.
    SaveCaseDialog(const QString& trend, const MomentSpan& visible, const std::optional<MomentSpan>& marked,
                   QWidget* parent = nullptr, const QTimeZone& zone = {});

    MomentSpan span() const;
    void chooseSpan(const MomentSpan& span) { m_chosen->choose(span); }

    void accept() override;  ///< stays open when the span is reversed

private:
    MomentSpan m_visible;
    std::optional<MomentSpan> m_marked;
    // All owned by the dialog.
    QRadioButton *m_shown, *m_between;
    SpanChoice* m_chosen;
};

}  // namespace plotix
