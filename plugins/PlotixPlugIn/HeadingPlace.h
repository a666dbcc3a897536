#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

class QLabel;

/// Keeps a heading beside a label, up to the edge of their parent, wherever the label is moved. The label *owns* it;
/// the widgets are *weak*. Main thread only.
class HeadingPlace : public QObject {
    Q_OBJECT
public:
    HeadingPlace(QWidget* heading, QLabel* label);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    QPointer<QWidget> m_heading;
    QPointer<QLabel> m_label;
};
