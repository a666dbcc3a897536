#include "hostapp/window/Appearance.h"

#include <QtCore/QFile>
#include <QtGui/QFontInfo>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleOption>

#include <algorithm>

// Outside the namespace, where the macro's function lives: a static library's resources join the program only when
// somebody names them.
static void joinStyleRules()
{
    Q_INIT_RESOURCE(Appearance);
}

namespace plotix {

namespace {

const QColor kWindow(0x2a, 0x2b, 0x2e);
const QColor kBase(0x1f, 0x20, 0x22);
const QColor kAlternateBase(0x24, 0x25, 0x28);
const QColor kButton(0x3a, 0x3c, 0x40);
const QColor kText(0xe2, 0xe3, 0xe5);
const QColor kDimText(0x8b, 0x8e, 0x94);
const QColor kAccent(0x3b, 0x78, 0xc4);

QPalette darkPalette()
{
    QPalette palette(kButton, kWindow);
    palette.setColor(QPalette::Window, kWindow);
    palette.setColor(QPalette::Base, kBase);
    palette.setColor(QPalette::AlternateBase, kAlternateBase);
    palette.setColor(QPalette::ToolTipBase, kBase);
    palette.setColor(QPalette::ToolTipText, kText);
    palette.setColor(QPalette::Highlight, kAccent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6f, 0xa8, 0xec));
    palette.setColor(QPalette::BrightText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, kText);
        palette.setColor(QPalette::Disabled, role, kDimText);
    }
    palette.setColor(QPalette::PlaceholderText, kDimText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, kButton);
    return palette;
}

/// Fusion with check boxes that can be seen on a dark background, in lists too, and flat selections without edges.
class QuietStyle : public QProxyStyle {
public:
    QuietStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck)
            drawCheckBox(*option, *painter);
        else if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
                 item && (element == PE_PanelItemViewItem || isSelectedRow(element, *item)))
            drawItemBackground(*item, *painter);
        else
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* answer) const override
    {
        // Alt held over a graph keeps its values as they are; letting go of it must not take the focus to the menus.
        return hint == SH_MenuBar_AltKeyNavigation ? 0 : QProxyStyle::styleHint(hint, option, widget, answer);
    }

private:
    /// Whether a tree draws a selected row's background, from the row's edge on, left of the items too.
    static bool isSelectedRow(PrimitiveElement element, const QStyleOptionViewItem& item)
    {
        return element == PE_PanelItemViewRow && item.state.testFlag(State_Selected);
    }

    static void drawItemBackground(const QStyleOptionViewItem& item, QPainter& painter)
    {
        const bool active = item.state.testFlag(State_Active);
        if (item.state.testFlag(State_Selected))
            painter.fillRect(item.rect, active ? kAccent : kButton.lighter(115));
        else if (item.backgroundBrush.style() != Qt::NoBrush)
            painter.fillRect(item.rect, item.backgroundBrush);
        else if (item.state.testFlag(State_MouseOver))
            painter.fillRect(item.rect, QColor(255, 255, 255, 12));
    }

    static void drawCheckBox(const QStyleOption& option, QPainter& painter)
    {
        const bool enabled = option.state.testFlag(State_Enabled);
        const bool on = option.state.testFlag(State_On);
        const double side = std::min(option.rect.width(), option.rect.height()) - 1.0;
        QRectF box(0, 0, side, side);
        box.moveCenter(QRectF(option.rect).center());
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(on && enabled ? kAccent.lighter(125) : QColor(0x70, 0x73, 0x79), 1));
        painter.setBrush(on ? (enabled ? kAccent : kButton) : kBase.lighter(120));
        painter.drawRoundedRect(box, 3, 3);
        if (option.state.testFlag(State_HasFocus) && option.state.testFlag(State_KeyboardFocusChange)) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(Qt::white, 1.5));
            painter.drawRoundedRect(box.adjusted(-0.5, -0.5, 0.5, 0.5), 3, 3);
        }
        if (on) {
            painter.setPen(
                QPen(enabled ? QColor(Qt::white) : kDimText, side / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            const QPointF tick[] = {box.topLeft() + QPointF(0.24, 0.53) * side,
                                    box.topLeft() + QPointF(0.43, 0.72) * side,
                                    box.topLeft() + QPointF(0.77, 0.30) * side};
            painter.drawPolyline(tick, 3);
        }
        painter.restore();
    }
};

/// A desktop names its own font; without one the toolkit may fall back to a monospaced font.
void chooseFont()
{
    if (!QFontInfo(QApplication::font()).fixedPitch())
        return;
    QFont font(QStringLiteral("Sans Serif"), 10);
    font.setStyleHint(QFont::SansSerif);
    QApplication::setFont(font);
}

/// The style sheet for what a palette cannot express.
QString styleRules()
{
    joinStyleRules();
    QFile file(QStringLiteral(":/plotix/Appearance.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

void applyAppearance(QApplication& application)
{
    QApplication::setStyle(new QuietStyle);  // the application owns it
    chooseFont();
    QApplication::setPalette(darkPalette());
    application.setStyleSheet(styleRules());
}

}  // namespace plotix
