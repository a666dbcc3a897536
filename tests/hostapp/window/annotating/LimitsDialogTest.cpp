#include "hostapp/window/annotating/LimitsDialog.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include <gtest/gtest.h>

#include <memory>

namespace plotix {

namespace {

/// The limits of an air temperature shown in °C.
class LimitsDialogTest : public testing::Test {
protected:
    void open(std::vector<SiteLimit> limits = {})
    {
        dialog = std::make_unique<LimitsDialog>("Air", "°C", limits);
        dialog->show();
    }
    template <class Widget>
    Widget& field(const char* name)
    {
        for (Widget* each : dialog->findChildren<Widget*>())
            if (each->accessibleName() == QLatin1String(name) && each->isVisible())
                return *each;
        ADD_FAILURE() << "no " << name;
        static Widget none;
        return none;
    }
    void type(const char* name, const char* text)
    {
        field<QLineEdit>(name).selectAll();
        QTest::keyClicks(&field<QLineEdit>(name), text);
    }
    void add()
    {
        for (QPushButton* button : dialog->findChildren<QPushButton*>())
            if (button->text() == "&Add Limit")
                button->click();
    }
    QString problem() { return dialog->findChild<QLabel*>("problem")->text(); }
    bool canAccept() { return dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled(); }

    std::unique_ptr<LimitsDialog> dialog;
};

TEST_F(LimitsDialogTest, BeginsWithARowForOneLimitWhoseValueIsTyped)
{
    open();
    EXPECT_FALSE(canAccept());
    QTest::keyClicks(dialog->focusWidget(), "60.5");
    EXPECT_TRUE(canAccept());
    ASSERT_EQ(dialog->limits().size(), 1U);
    EXPECT_EQ(dialog->limits()[0].name, "high");
    EXPECT_EQ(dialog->limits()[0].value, 60.5);
    EXPECT_EQ(dialog->limits()[0].unit, "°C");
}

TEST_F(LimitsDialogTest, EveryPartOfALimitIsChosen)
{
    open();
    type("Name of limit 1", "frost");
    type("Value of limit 1", "-2");
    field<QComboBox>("Side of limit 1").setCurrentIndex(1);
    field<QComboBox>("Severity of limit 1").setCurrentIndex(2);
    EXPECT_EQ(dialog->limits()[0],
              (SiteLimit{0, 0, "frost", -2, "°C", KTVLimit::Side::Below, KTVLimit::Severity::Alarm}));
}

TEST_F(LimitsDialogTest, AValueThatIsLeftKeepsItsUnit)
{
    const SiteLimit limit{7, 3, "high", 330.1, "K"};
    open({limit});
    EXPECT_TRUE(field<QLineEdit>("Value of limit 1").text().startsWith("56.95"));
    type("Name of limit 1", "higher");
    EXPECT_EQ(dialog->limits()[0].value, 330.1);
    EXPECT_EQ(dialog->limits()[0].unit, "K");
    EXPECT_EQ(dialog->limits()[0].id, 7);
    type("Value of limit 1", "57");
    EXPECT_EQ(dialog->limits()[0].unit, "°C");
}

TEST_F(LimitsDialogTest, SaysWhatIsWrong)
{
    open({{1, 3, "high", 60, "°C"}});
    add();
    EXPECT_TRUE(problem().contains("Type a value for “low”"));
    type("Value of limit 2", "much");
    EXPECT_TRUE(problem().contains("no number"));
    type("Value of limit 2", "5");
    type("Name of limit 2", "High");
    EXPECT_TRUE(problem().contains("Two limits"));
    EXPECT_FALSE(canAccept());
}

TEST_F(LimitsDialogTest, ALimitIsRemoved)
{
    open({{1, 3, "high", 60, "°C"}, {2, 3, "low", 5, "°C"}});
    field<QToolButton>("Remove limit 1").click();
    ASSERT_EQ(dialog->limits().size(), 1U);
    EXPECT_EQ(dialog->limits()[0].name, "low");
    field<QToolButton>("Remove limit 2").click();
    EXPECT_TRUE(canAccept());
    EXPECT_TRUE(dialog->limits().empty());
}

}  // namespace
}  // namespace plotix
