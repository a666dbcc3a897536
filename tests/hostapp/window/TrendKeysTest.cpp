#include "hostapp/window/TrendKeys.h"

#include "tests/support/stubsite/StubTrend.h"

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

namespace {

/// A view with actions as a trend has them: a letter that counts in its graph, inside a menu.
class KeyedTrend : public KTVPlugIn {
    Q_OBJECT
public:
    static std::shared_ptr<KeyedTrend> make()
    {
        std::shared_ptr<KeyedTrend> trend(new KeyedTrend);
        for (const auto& [action, keys] : {std::pair(&trend->m_maximum, QKeySequence(Qt::Key_M)),
                                           std::pair(&trend->m_hold, QKeySequence(Qt::Key_Space)),
                                           std::pair(&trend->m_back, QKeySequence(Qt::Key_M | Qt::SHIFT))}) {
            action->setShortcut(keys);
            action->setShortcutContext(Qt::WidgetShortcut);
            trend->m_values.addAction(action);
            connect(action, &QAction::triggered, trend.get(),
                    [own = trend.get(), action] { own->m_done << action->text(); });
        }
        return trend;
    }
    QString name() const override { return QStringLiteral("Keyed"); }
    Q_INVOKABLE QList<QAction*> readingActions() const { return {m_values.menuAction()}; }
    QAction& maximum() { return m_maximum; }
    const QStringList& done() const { return m_done; }

private:
    KeyedTrend() = default;
    QMenu m_values;
    QAction m_maximum{QStringLiteral("maximum")}, m_hold{QStringLiteral("hold")}, m_back{QStringLiteral("back")};
    QStringList m_done;
};

/// A window with a trend, a list, a field and a button.
class TrendKeysTest : public testing::Test {
protected:
    TrendKeysTest() : trend(KeyedTrend::make()), keys([this] { return trend; })
    {
        auto* column = new QVBoxLayout(&window);
        for (QWidget* part : std::initializer_list<QWidget*>{trend->view(), &list, &field, &button})
            column->addWidget(part);
        list.addItems({"Motor", "Pump"});
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void pressIn(QWidget& part, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        part.setFocus();
        QTest::keyClick(&part, key, modifiers);
    }

    QWidget window, other;
    QListWidget list;
    QLineEdit field;
    QPushButton button;
    std::shared_ptr<KeyedTrend> trend;
    plotix::TrendKeys keys;
};

TEST_F(TrendKeysTest, AKeyOfTheMenuReachesTheTrendFromAListAndAButton)
{
    pressIn(list, Qt::Key_M);
    pressIn(button, Qt::Key_M, Qt::ShiftModifier);
    EXPECT_EQ(trend->done(), QStringList({"maximum", "back"}));
}

TEST_F(TrendKeysTest, WhatIsTypedIntoAFieldIsText)
{
    pressIn(field, Qt::Key_M);
    EXPECT_EQ(field.text(), "m");
    EXPECT_TRUE(trend->done().isEmpty());
}

TEST_F(TrendKeysTest, TheSpaceBarPressesAButton)
{
    int presses = 0;
    QObject::connect(&button, &QPushButton::clicked, &window, [&presses] { ++presses; });
    pressIn(button, Qt::Key_Space);
    EXPECT_EQ(presses, 1);
    EXPECT_TRUE(trend->done().isEmpty());
}

TEST_F(TrendKeysTest, AKeyThatCannotActIsLeftToTheList)
{
    trend->maximum().setEnabled(false);
    list.setCurrentRow(1);
    pressIn(list, Qt::Key_M);
    EXPECT_EQ(list.currentRow(), 0) << "the list looks for what begins so";
}

TEST_F(TrendKeysTest, KeysOfAnotherWindowAreItsOwn)
{
    QListWidget otherList(&other);
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    pressIn(otherList, Qt::Key_M);
    EXPECT_TRUE(trend->done().isEmpty());
}

}  // namespace

#include "TrendKeysTest.moc"
