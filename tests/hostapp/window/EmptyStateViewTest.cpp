#include "hostapp/window/EmptyStateView.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class EmptyStateViewTest : public testing::TestWithParam<int> {
protected:
    void say(const QString& text)
    {
        m_view.resize(GetParam(), 700);
        m_view.show(QStringLiteral("Nothing here"), text, {QStringLiteral("Make Something")});
        QApplication::processEvents();
    }
    const QLabel& label(const QString& text) const
    {
        const auto labels = m_view.findChildren<QLabel*>();
        return **std::find_if(labels.begin(), labels.end(), [&](QLabel* each) { return each->text() == text; });
    }
    plotix::EmptyStateView m_view;
};

TEST_P(EmptyStateViewTest, EveryLineOfALongTextIsShown)
{
    const QString text = QStringLiteral("Some words that say what can be done. ").repeated(5);
    say(text);
    EXPECT_GE(label(text).height(), label(text).heightForWidth(label(text).width()));
}

INSTANTIATE_TEST_SUITE_P(Widths, EmptyStateViewTest, testing::Values(400, 700, 1000, 1900));

}  // namespace
