#include "hostapp/window/computing/ComputedPropertyDialog.h"

#include "hostapp/document/SiteTransaction.h"
#include "hostapp/window/computing/FormulaEdit.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

namespace plotix {
namespace {

/// The dialog over a boiler of Supply, "Return flow" and Power.
class ComputedPropertyDialogTest : public testing::Test {
protected:
    ComputedPropertyDialogTest()
    {
        SiteTransaction transaction(m_folder.filePath("site.plotix"));
        const RowId agent = transaction.findOrCreateAgent("Boiler");
        RecordBlock block{SharedArray<double>::fromVector({0, 1800}), {}};
        for (const auto& [name, unit, values] : {std::tuple{"Supply", "°C", std::vector<double>{60, 62}},
                                                 {"Return flow", "°C", {40, 41}},
                                                 {"Power", "kW", {6, 8}}})
            block.columns.push_back({transaction.findOrCreateProperty(agent, name, QString::fromUtf8(unit)).id,
                                     SharedArray<double>::fromVector(std::vector(values)),
                                     {}});
        transaction.records().store(agent, block);
        transaction.commit();
        document = SiteDocument::open(m_folder.filePath("site.plotix"));
    }

    void open(const std::optional<SiteProperty::Description>& property = {})
    {
        dialog = std::make_unique<ComputedPropertyDialog>(ComputedPropertyDialog::About{
            document->records(), document->formulaDirectory(), document->agents().front()->id(), property});
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
    }
    FormulaEdit& formula() { return *dialog->findChild<FormulaEdit*>("formula"); }
    QLineEdit& name() { return *dialog->findChildren<QLineEdit*>().front(); }
    QComboBox& unit() { return *dialog->findChildren<QComboBox*>().front(); }
    QPushButton& okay() { return *dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok); }
    QAbstractItemView& list() { return *formula().findChild<QCompleter*>()->popup(); }
    std::string message() { return dialog->findChild<QLabel*>("formulaMessage")->text().toStdString(); }
    QString preview() { return dialog->findChild<QLabel*>("formulaPreview")->text(); }
    void type(const char* text)
    {
        formula().setFocus();
        QTest::keyClicks(&formula(), QString::fromUtf8(text));
    }
    std::string underlined()
    {
        const auto marks = formula().extraSelections();
        return marks.isEmpty() ? std::string() : marks.front().cursor.selectedText().toStdString();
    }

    std::shared_ptr<SiteDocument> document;
    std::unique_ptr<ComputedPropertyDialog> dialog;

private:
    QTemporaryDir m_folder;
};

TEST_F(ComputedPropertyDialogTest, TheUnitThatFollowsIsTold)
{
    open();
    name().setText("Spread");
    formula().setPlainText("Supply - \"Return flow\"");
    EXPECT_EQ(message(), "The result is in K.");
    EXPECT_TRUE(okay().isEnabled());
    EXPECT_EQ(unit().currentText().toStdString(), "as it follows: K");
    EXPECT_EQ(dialog->property().name, "Spread");
    EXPECT_EQ(dialog->property().formula.unit, "");
}

TEST_F(ComputedPropertyDialogTest, WhatIsWrongIsUnderlinedAndSaid)
{
    open();
    name().setText("Sum");
    formula().setPlainText("2 * (Supply + Power)");
    EXPECT_EQ(underlined(), "Supply + Power");
    EXPECT_EQ(message(), "°C and kW do not fit together: they are different quantities.");
    EXPECT_FALSE(okay().isEnabled());
    formula().setPlainText("Supply -");
    EXPECT_EQ(underlined(), "-");
    formula().setPlainText("Supply");
    EXPECT_EQ(underlined(), "");
}

TEST_F(ComputedPropertyDialogTest, ANameThatIsMissingOrTakenIsSaid)
{
    open();
    formula().setPlainText("Supply");
    EXPECT_EQ(message(), "Give it a name.");
    name().setText("power");
    EXPECT_EQ(message(), "“Power” is taken: choose another name.");
    EXPECT_FALSE(okay().isEnabled());
}

TEST_F(ComputedPropertyDialogTest, NamesAreCompletedWhileTyping)
{
    open();
    type("Supply - Ret");
    ASSERT_TRUE(list().isVisible());
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(formula().formula().toStdString(), "Supply - \"Return flow\"");
    EXPECT_FALSE(list().isVisible());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(ComputedPropertyDialogTest, EverythingIsOfferedOnControlSpaceAndEscapeClosesTheListAlone)
{
    open();
    type("Supply - ");
    EXPECT_FALSE(list().isVisible());
    QTest::keyClick(&formula(), Qt::Key_Space, Qt::ControlModifier);
    ASSERT_TRUE(list().isVisible());
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_FALSE(list().isVisible());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(ComputedPropertyDialogTest, ReturnInTheFormulaAccepts)
{
    open();
    name().setText("Heat");
    formula().setPlainText("integral(Power)");
    QTest::keyClick(&formula(), Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
}

TEST_F(ComputedPropertyDialogTest, AUnitCanBeChosenOfThoseThatFit)
{
    open();
    name().setText("Heat");
    formula().setPlainText("integral(Power)");
    EXPECT_GE(unit().findText("MWh"), 1);
    unit().setEditText("MJ");
    EXPECT_EQ(message(), "The result is in MJ.");
    EXPECT_EQ(dialog->property().formula.unit, "MJ");
    unit().setEditText("bar");
    EXPECT_EQ(message(), "The result is kWh, which cannot be shown in bar.");
    EXPECT_FALSE(okay().isEnabled());
}

TEST_F(ComputedPropertyDialogTest, TheLastValuesAreShown)
{
    open();
    name().setText("Heat");
    formula().setPlainText("integral(Power)");
    EXPECT_TRUE(QTest::qWaitFor([&] { return preview().contains("3 kWh"); })) << preview().toStdString();
    formula().setPlainText("integral(Power) + 1 h");
    formula().setPlainText("integral(");
    EXPECT_EQ(preview(), "");
    QTest::qWait(400);
    EXPECT_EQ(preview(), "");
}

TEST_F(ComputedPropertyDialogTest, WhatIsChangedStandsInTheFields)
{
    SiteProperty::Description known;
    known.id = 99;
    known.name = "Spread";
    known.formula = PropertyFormula{"Supply - \"Return flow\"", "", PropertyFormula::Join::Straight, 5400};
    open(known);
    const ComputedProperty property = dialog->property();
    EXPECT_EQ(property.name, "Spread");
    EXPECT_EQ(property.formula, *known.formula);
    EXPECT_FALSE(property.color);
}

}  // namespace
}  // namespace plotix
