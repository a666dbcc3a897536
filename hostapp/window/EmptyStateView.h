#pragma once

#include <QtWidgets/QLabel>
#include <QtWidgets/QWidget>

class QAction;
class QHBoxLayout;

/// Shown at the right while there is no trend: what the window is for, and what to do next. Main thread only.
namespace plotix {

class EmptyStateView : public QWidget {
    Q_OBJECT
public:
    explicit EmptyStateView(QWidget* parent = nullptr);

    /// `buttons` are texts; `pressed` tells their number, counted from 0.
    void show(const QString& title, const QString& text, const QStringList& buttons);
    QString title() const { return m_title->text(); }

signals:
    void pressed(int button);

private:
    QLabel* m_title;  // owned by this view, as is the rest
    QLabel* m_text;
    QHBoxLayout* m_buttons;
};

}  // namespace plotix
