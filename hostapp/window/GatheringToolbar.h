#pragma once

#include <QtWidgets/QToolBar>

class QToolButton;

namespace plotix {

/// A toolbar of many buttons: where they do not fit side by side, one button with a menu of them stands for all, so
/// that none is out of reach and the window may be narrow.
///
/// *Owns* the items it is given. Main thread only.
class GatheringToolbar : public QToolBar {
    Q_OBJECT
public:
    explicit GatheringToolbar(const QString& title, QWidget* parent = nullptr);

    /// Takes the place of the items before, which are deleted later: one of them may be the one just triggered.
    void setItems(const QList<QAction*>& items);

    bool isGathered() const { return m_gathered; }
    QToolButton* gatheringButton() const { return m_button; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void spread();
    void gather();
    void gatherIfNeeded();

    QList<QAction*> m_items;
    QToolButton* m_button;
    QAction* m_buttonAction;
    int m_spreadWidth = 0;  ///< points that the items take side by side
    bool m_gathered = false;
};

}  // namespace plotix
