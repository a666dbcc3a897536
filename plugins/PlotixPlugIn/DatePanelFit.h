#pragma once

#include <QtCore/QObject>

#include <vector>

class QPushButton;
class QWidget;

/// Keeps a date panel usable where it is narrow: the labels go, and the quick-range button keeps its arrow alone. Both
/// come back with the room. Pickers and buttons speak to screen readers by names of their own all the time.
///
/// The panel *owns* it and outlives none of the widgets, all of which stand in the panel's layout. Main thread only.
class DatePanelFit : public QObject {
    Q_OBJECT
public:
    DatePanelFit(QWidget* panel, std::vector<QWidget*> labels, QPushButton* quickRange);

    bool isNarrow() const { return m_isNarrow; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int comfortableWidth() const;  ///< points that everything takes with its text
    void fit();

    QWidget* m_panel;
    std::vector<QWidget*> m_labels;
    QPushButton* m_quickRange;
    QString m_quickRangeText;
    bool m_isNarrow = false;
};
