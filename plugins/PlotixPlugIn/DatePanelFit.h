#pragma once

#include <QtCore/QObject>

#include <vector>

class QPushButton;
class QWidget;

/// Keeps a date panel usable where it is narrow: hides the labels, and the text of the quick-range button but not its
/// arrow. Both come back when there is space. Screen readers read the accessible names of pickers and buttons all the
/// time.
///
/// The panel *owns* it. The widgets are *borrowed*: all stand in the panel's layout and live as long as the panel. Main
/// thread only.
class DatePanelFit : public QObject {
    Q_OBJECT
public:
    DatePanelFit(QWidget* panel, std::vector<QWidget*> labels, QPushButton* quickRange);

    bool isNarrow() const { return m_isNarrow; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int comfortableWidth() const;  ///< width of everything with its text, pixels
    void fit();

    QWidget* m_panel;
    std::vector<QWidget*> m_labels;
    QPushButton* m_quickRange;
    QString m_quickRangeText;
    bool m_isNarrow = false;
};
