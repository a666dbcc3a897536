#pragma once

#include "hostapp/site/TrendSpans.h"

#include <QtWidgets/QWidget>

class QRadioButton;
class QTimeZone;

/// A row of a dialog that asks for a span: the button that chooses it, and its two times, which can be changed while it
/// is chosen. A day of the calendar is meant from its beginning to its end. Main thread only.
namespace plotix {

class MomentEdit;

class SpanChoice : public QWidget {
    Q_OBJECT
public:
    explicit SpanChoice(const MomentSpan& proposed, QWidget* parent = nullptr);

    QRadioButton& button() { return *m_button; }  ///< to be grouped with those of the other choices
    bool isChosen() const;
    MomentSpan span() const;  ///< as it stands in the fields; may be reversed
    void choose(const MomentSpan& span);
    void sayBy(const QTimeZone& zone);  ///< by its clocks; an invalid one is the user's
    bool isUnderstood() const;          ///< whether dates stand in both fields
    void askAgain();                    ///< leads to what is no date, or to the end, for a span that is reversed

private:
    // All owned by the widget.
    QRadioButton* m_button;
    MomentEdit *m_from, *m_to;
};

}  // namespace plotix
