#include "plugins/PlotixPlugIn/host/PlainToolTip.h"

#include <QtGui/QTextDocument>

#include <gtest/gtest.h>

namespace {

/// As a tool tip shows it.
QString shown(const QString& toolTip)
{
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText().replace(QChar::Nbsp, u' ');
}

TEST(PlainToolTipTest, OrdinaryTextsStay)
{
    for (const char* text : {"", "Air Temperature", "R & D", "1 < 2", "one\ntwo", "Colors:\rred"})
        EXPECT_EQ(plainToolTip(text), text);
}

TEST(PlainToolTipTest, NamesThatLookLikeRichTextAreShownAsTheyAre)
{
    for (const char* text : {"<b>x</b> & y", "<img src=\"a.png\">", "a &lt; b", "Names:\n<i>one</i>  two", "<?xml?>"})
        EXPECT_EQ(shown(plainToolTip(text)), text);
}

TEST(PlainToolTipTest, OldLineEndsStayLineEnds)
{
    EXPECT_EQ(shown(plainToolTip("Colors:\r<b>x</b> is red")), "Colors:\n<b>x</b> is red");
}

}  // namespace
