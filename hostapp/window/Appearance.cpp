#include "hostapp/window/Appearance.h"

#include "hostapp/window/AppearancePalettes.h"

#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QSettings>
#include <QtCore/QTimer>
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

constexpr auto kSchemeKey = "Appearance/scheme";  // stored, as are the words: never change
constexpr std::pair<ColourScheme, const char*> kSchemeWords[] = {
    {ColourScheme::LikeDesktop, "desktop"}, {ColourScheme::Light, "light"}, {ColourScheme::Dark, "dark"}};

/// Fusion with check boxes that can be seen on either background, in lists too, and flat selections without edges.
class QuietStyle : public QProxyStyle {
public:
    explicit QuietStyle(const LookColours& look) : QProxyStyle(QStringLiteral("Fusion")), m_look(look) {}

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
        if (hint == SH_MenuBar_AltKeyNavigation)
            return 0;
        if (hint == SH_EtchDisabledText)  // a shadow a pixel below the words makes them look blurred
            return 0;
        if (hint == SH_Menu_Scrollable)  // rather than columns beside each other, of which the last ones are cut
            return 1;
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }

private:
    /// Whether a tree draws a selected row's background, from the row's edge on, left of the items too.
    static bool isSelectedRow(PrimitiveElement element, const QStyleOptionViewItem& item)
    {
        return element == PE_PanelItemViewRow && item.state.testFlag(State_Selected);
    }

    void drawItemBackground(const QStyleOptionViewItem& item, QPainter& painter) const
    {
        const bool active = item.state.testFlag(State_Active);
        if (item.state.testFlag(State_Selected))
            painter.fillRect(item.rect, active ? m_look.accent : inactiveSelection());
        else if (item.backgroundBrush.style() != Qt::NoBrush)
            painter.fillRect(item.rect, item.backgroundBrush);
        else if (item.state.testFlag(State_MouseOver))
            painter.fillRect(item.rect, m_look.hover);
    }

    void drawCheckBox(const QStyleOption& option, QPainter& painter) const
    {
        const bool enabled = option.state.testFlag(State_Enabled);
        const bool on = option.state.testFlag(State_On);
        const double side = std::min(option.rect.width(), option.rect.height()) - 1.0;
        QRectF box(0, 0, side, side);
        box.moveCenter(QRectF(option.rect).center());
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(on && enabled ? m_look.accent.lighter(125) : m_look.boxEdge, 1));
        painter.setBrush(on ? (enabled ? m_look.accent : m_look.button) : m_look.base.lighter(120));
        painter.drawRoundedRect(box, 3, 3);
        if (option.state.testFlag(State_HasFocus) && option.state.testFlag(State_KeyboardFocusChange)) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(m_look.text, 1.5));
            painter.drawRoundedRect(box.adjusted(-0.5, -0.5, 0.5, 0.5), 3, 3);
        }
        if (on) {
            painter.setPen(QPen(enabled ? QColor(Qt::white) : m_look.dimText, side / 7, Qt::SolidLine, Qt::RoundCap,
                                Qt::RoundJoin));
            const QPointF tick[] = {box.topLeft() + QPointF(0.24, 0.53) * side,
                                    box.topLeft() + QPointF(0.43, 0.72) * side,
                                    box.topLeft() + QPointF(0.77, 0.30) * side};
            painter.drawPolyline(tick, 3);
        }
        painter.restore();
    }

    /// A selection in a window that is not the active one: quiet, and still unlike its neighbours.
    QColor inactiveSelection() const
    {
        return m_look.text.lightness() > 128 ? m_look.button.lighter(115) : m_look.button.darker(106);
    }

    LookColours m_look;
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
QString styleRules(const LookColours& look)
{
    joinStyleRules();
    QFile file(QStringLiteral(":/plotix/Appearance.qss"));
    QString rules = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    const std::pair<const char*, QColor> colours[] = {
        {"@window", look.window}, {"@base", look.base},       {"@text", look.text},          {"@accent", look.accent},
        {"@line", look.line},     {"@boxEdge", look.boxEdge}, {"@quietText", look.quietText}};
    for (const auto& [name, colour] : colours)
        rules.replace(QLatin1String(name), colour.name());
    return rules;
}

/// Whether the desktop's own palette is dark. A display without a desktop says nothing of the user's taste, and the
/// toolkit's palette for it is light: there, and in pictures drawn without a display, the look is the dark one.
bool isDesktopDark()
{
    if (qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP"))
        return true;
    QApplication::setPalette(QPalette());  // takes our own away: what is left is the desktop's
    return isDark(QApplication::palette());
}

bool wantsDark(ColourScheme scheme)
{
    return scheme == ColourScheme::LikeDesktop ? isDesktopDark() : scheme == ColourScheme::Dark;
}

/// Looks again when the desktop says that its theme has changed.
class DesktopTheme : public QObject {
public:
    explicit DesktopTheme(QApplication& application) : QObject(&application) { application.installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ThemeChange && watched->isWindowType() && !m_isQueued) {
            m_isQueued = true;  // every window is told, one change is enough
            QTimer::singleShot(0, this, [this] {
                m_isQueued = false;
                if (chosenColourScheme() == ColourScheme::LikeDesktop)
                    applyAppearance(*qApp);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_isQueued = false;
};

}  // namespace

void applyAppearance(QApplication& application)
{
    static const QPointer<DesktopTheme> theme = new DesktopTheme(application);  // the application owns it
    chooseFont();
    const LookColours& look = wantsDark(chosenColourScheme()) ? darkLook() : lightLook();
    QApplication::setStyle(new QuietStyle(look));  // the application owns it
    QApplication::setPalette(paletteOf(look));
    application.setStyleSheet(styleRules(look));
}

ColourScheme chosenColourScheme()
{
    const QString stored = QSettings().value(QLatin1String(kSchemeKey)).toString();
    for (const auto& [scheme, word] : kSchemeWords)
        if (stored == QLatin1String(word))
            return scheme;
    return ColourScheme::LikeDesktop;
}

void chooseColourScheme(ColourScheme scheme)
{
    for (const auto& [one, word] : kSchemeWords)
        if (one == scheme)
            QSettings().setValue(QLatin1String(kSchemeKey), QLatin1String(word));
    applyAppearance(*qApp);
}

QString lookOfGraphs()
{
    return isDark(QApplication::palette()) ? QStringLiteral("dark") : QStringLiteral("light");
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

}  // namespace plotix
