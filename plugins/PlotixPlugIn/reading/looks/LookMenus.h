#pragma once

#include "plugins/PlotixPlugIn/reading/looks/LineLook.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtGui/QAction>
#include <QtGui/QActionGroup>
#include <QtWidgets/QMenu>

#include <functional>
#include <memory>
#include <vector>

/// What people choose looks by: the actions of a trend, and the items for some of its lines.
///
/// The looks *own* it and are *borrowed*. Main thread only.
namespace plotix {

class TrendLooks;

class LookMenus : public QObject {
    Q_OBJECT
public:
    explicit LookMenus(TrendLooks& looks);
    ~LookMenus() override;

    const std::vector<QAction*>& actions() const { return m_actions; }

    /// Checks what is chosen.
    void update();

    /// The items for these lines: a check where all of them look that way; a choice is made for all of them.
    void addLineItems(QMenu& menu, const QStringList& keys);

private:
    using Change = std::function<void(LineLook&)>;
    using Test = std::function<bool(const LineLook&)>;

    QAction* addAction(const char* text, QActionGroup* group = nullptr);
    void addTrendActions();
    void addLinesMenu();
    QAction* addItem(QMenu& menu, const QStringList& keys, const QString& text, const Test& isSo, const Change& change);
    void addCourses(QMenu& menu, const QStringList& keys);
    void addWidths(QMenu& menu, const QStringList& keys);
    void addDashes(QMenu& menu, const QStringList& keys);
    void addColors(QMenu& menu, const QStringList& keys);
    void addPoints(QMenu& menu, const QStringList& keys);
    void addFills(QMenu& menu, const QStringList& keys);
    void changeAll(const QStringList& keys, const Change& change);
    void askForColor(const QStringList& keys);

    TrendLooks& m_looks;
    std::vector<QAction*> m_actions;               // children
    std::vector<QAction*> m_lookActions, m_marks;  // in the order of their enumerations
    QAction *m_usualText = nullptr, *m_usualLines = nullptr, *m_transparent = nullptr;
    std::unique_ptr<QMenu> m_linesMenu;
};

}  // namespace plotix
