#include "plugins/PlotixPlugIn/reading/looks/LookMenus.h"

#include "plotkit/render/LineSample.h"
#include "plugins/PlotixPlugIn/reading/looks/DistinctLines.h"
#include "plugins/PlotixPlugIn/reading/looks/TrendLooks.h"

#include <QtCore/QLocale>
#include <QtGui/QPainter>
#include <QtWidgets/QColorDialog>

#include <algorithm>

namespace plotix {

namespace {

constexpr QSize kSampleSize(40, 16);  // points
constexpr double kTextStep = 1;       // points
constexpr double kWidthStep = 1.25;   // times
constexpr double kUsualText = 12;     // points, the contract's
constexpr double kWidths[] = {0.5, 1, 1.5, 2, 3, 4, 6};
constexpr double kPointSizes[] = {4, 6, 8, 12};

QIcon iconOf(const CPTScatterPlot& plot)
{
    QPixmap pixmap(kSampleSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    plotkit::paintLineSample(painter, QRectF(QPointF(), kSampleSize), plot);
    return pixmap;
}

QIcon iconOf(const QColor& color, LineDash dash, double width = 3)
{
    CPTScatterPlot plot;
    plot.setDataLineStyle({.width = width, .color = color, .dashPattern = dashLengths(dash, width)});
    return iconOf(plot);
}

/// A name may hold an ampersand, which a menu would take for a key.
QString itemText(QString name)
{
    return name.replace(u'&', QStringLiteral("&&"));
}

QString lengthText(double points)
{
    return QLocale().toString(points, 'g', 3) + QStringLiteral(" pt");
}

}  // namespace

LookMenus::LookMenus(TrendLooks& looks) : m_looks(looks)
{
    addTrendActions();
    addLinesMenu();
    update();
}

LookMenus::~LookMenus() = default;

QAction* LookMenus::addAction(const char* text, QActionGroup* group)
{
    auto* action = new QAction(localizedText(text), this);
    setMenuOf(*action, localizedText(QT_TRANSLATE_NOOP("Plotix", "&Look")));
    if (group) {
        action->setCheckable(true);
        group->addAction(action);
    }
    m_actions.push_back(action);
    return action;
}

void LookMenus::addTrendActions()
{
    auto* looks = new QActionGroup(this);
    constexpr const char* kLooks[] = {QT_TRANSLATE_NOOP("Plotix", "&Dark"), QT_TRANSLATE_NOOP("Plotix", "&Light"),
                                      QT_TRANSLATE_NOOP("Plotix", "&Paper")};
    for (const GraphLook look : {GraphLook::Dark, GraphLook::Light, GraphLook::Paper}) {
        m_lookActions.push_back(addAction(kLooks[static_cast<int>(look)], looks));
        connect(m_lookActions.back(), &QAction::triggered, this, [this, look] { m_looks.setLook(look); });
    }
    auto* marks = new QActionGroup(this);
    constexpr const char* kMarks[] = {QT_TRANSLATE_NOOP("Plotix", "&Colors of the Properties"),
                                      QT_TRANSLATE_NOOP("Plotix", "Da&shes Where Colors Are Alike"),
                                      QT_TRANSLATE_NOOP("Plotix", "D&istinct Colors and Dashes")};
    for (const LineMarks mark : {LineMarks::Own, LineMarks::Apart, LineMarks::Distinct}) {
        m_marks.push_back(addAction(kMarks[static_cast<int>(mark)], marks));
        connect(m_marks.back(), &QAction::triggered, this, [this, mark] { m_looks.setMarks(mark); });
    }
    const auto resize = [this](double step) { m_looks.setFontSize(m_looks.fontSize().value_or(kUsualText) + step); };
    connect(addAction(QT_TRANSLATE_NOOP("Plotix", "Lar&ger Text")), &QAction::triggered, this,
            [resize] { resize(kTextStep); });
    connect(addAction(QT_TRANSLATE_NOOP("Plotix", "S&maller Text")), &QAction::triggered, this,
            [resize] { resize(-kTextStep); });
    const auto scale = [this](double times) { m_looks.setLineWidth(m_looks.lineWidth() * times); };
    connect(addAction(QT_TRANSLATE_NOOP("Plotix", "Thic&ker Lines")), &QAction::triggered, this,
            [scale] { scale(kWidthStep); });
    connect(addAction(QT_TRANSLATE_NOOP("Plotix", "Thi&nner Lines")), &QAction::triggered, this,
            [scale] { scale(1 / kWidthStep); });
    m_usualLines = addAction(QT_TRANSLATE_NOOP("Plotix", "&Usual Thickness of Lines"));
    connect(m_usualLines, &QAction::triggered, this, [this] { m_looks.setLineWidth(1); });
    m_transparent = addAction(QT_TRANSLATE_NOOP("Plotix", "&Transparent Ground"));
    m_transparent->setCheckable(true);
    connect(m_transparent, &QAction::triggered, this, [this](bool isChosen) { m_looks.setTransparent(isChosen); });
    m_usualText = addAction(QT_TRANSLATE_NOOP("Plotix", "Usual Te&xt Size"));
    connect(m_usualText, &QAction::triggered, this, [this] { m_looks.setFontSize(std::nullopt); });
}

/// Made anew each time: lines come and go.
void LookMenus::addLinesMenu()
{
    m_linesMenu = std::make_unique<QMenu>();
    addAction(QT_TRANSLATE_NOOP("Plotix", "Look &of Lines"))->setMenu(m_linesMenu.get());
    connect(m_linesMenu.get(), &QMenu::aboutToShow, this, [this] {
        m_linesMenu->clear();
        for (const ReadLine& line : m_looks.lines()) {
            QMenu* menu = m_linesMenu->addMenu(itemText(line.name));
            if (const CPTScatterPlotPtr plot = m_looks.plotOf(line.key))
                menu->setIcon(iconOf(*plot));
            addLineItems(*menu, {line.key});
        }
    });
}

void LookMenus::update()
{
    m_lookActions[static_cast<std::size_t>(m_looks.look())]->setChecked(true);
    m_marks[static_cast<std::size_t>(m_looks.marks())]->setChecked(true);
    m_usualText->setEnabled(m_looks.fontSize().has_value());
    m_usualLines->setEnabled(m_looks.lineWidth() != 1);
    m_transparent->setChecked(m_looks.isTransparent());
}

void LookMenus::changeAll(const QStringList& keys, const Change& change)
{
    std::map<QString, LineLook> looks;
    for (const QString& key : keys) {
        looks[key] = m_looks.lineLook(key);
        change(looks[key]);
    }
    m_looks.setLineLooks(looks);
}

QAction* LookMenus::addItem(QMenu& menu, const QStringList& keys, const QString& text, const Test& isSo,
                            const Change& change)
{
    QAction* item = menu.addAction(text);
    item->setCheckable(true);
    item->setChecked(
        std::all_of(keys.begin(), keys.end(), [&](const QString& key) { return isSo(m_looks.lineLook(key)); }));
    connect(item, &QAction::triggered, this, [this, keys, change] { changeAll(keys, change); });
    return item;
}

void LookMenus::addLineItems(QMenu& menu, const QStringList& keys)
{
    if (keys.isEmpty())
        return;
    addCourses(menu, keys);
    addDashes(menu, keys);
    addWidths(menu, keys);
    addColors(menu, keys);
    addPoints(menu, keys);
    addFills(menu, keys);
    menu.addSeparator();
    QAction* usual = menu.addAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Usual Look")));
    usual->setEnabled(
        std::any_of(keys.begin(), keys.end(), [&](const QString& key) { return !m_looks.lineLook(key).isEmpty(); }));
    connect(usual, &QAction::triggered, this, [this, keys] { changeAll(keys, [](LineLook& look) { look = {}; }); });
}

void LookMenus::addCourses(QMenu& menu, const QStringList& keys)
{
    struct Row {
        CPTScatterPlotInterpolation course;
        const char* text;
    };
    constexpr Row kRows[] = {
        {CPTScatterPlotInterpolation::Linear, QT_TRANSLATE_NOOP("Plotix", "&Straight Lines")},
        {CPTScatterPlotInterpolation::HoldLast, QT_TRANSLATE_NOOP("Plotix", "S&teps: Hold the Last Value")},
        {CPTScatterPlotInterpolation::PointsOnly, QT_TRANSLATE_NOOP("Plotix", "Points &Only")}};
    for (const Row& row : kRows)
        addItem(
            menu, keys, localizedText(row.text),
            [course = row.course](const LineLook& look) {
                return look.interpolation.value_or(CPTScatterPlotInterpolation::Linear) == course;
            },
            [course = row.course](LineLook& look) {
                look.interpolation =
                    course == CPTScatterPlotInterpolation::Linear ? std::nullopt : std::optional(course);
            });
}

void LookMenus::addDashes(QMenu& menu, const QStringList& keys)
{
    QMenu& dashes = *menu.addMenu(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Dashes")));
    addItem(
        dashes, keys, localizedText(QT_TRANSLATE_NOOP("Plotix", "As &Usual")),
        [](const LineLook& look) { return !look.dash; }, [](LineLook& look) { look.dash.reset(); });
    for (int number = 0; number < kLineDashCount; ++number) {
        const auto dash = static_cast<LineDash>(number);
        addItem(
            dashes, keys, titleOfDash(dash), [dash](const LineLook& look) { return look.dash == dash; },
            [dash](LineLook& look) { look.dash = dash; })
            ->setIcon(iconOf(menu.palette().color(QPalette::Text), dash, 2));
    }
}

void LookMenus::addWidths(QMenu& menu, const QStringList& keys)
{
    QMenu& widths = *menu.addMenu(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Width")));
    addItem(
        widths, keys, localizedText(QT_TRANSLATE_NOOP("Plotix", "As &Usual")),
        [](const LineLook& look) { return !look.width; }, [](LineLook& look) { look.width.reset(); });
    for (const double width : kWidths)
        addItem(
            widths, keys, lengthText(width), [width](const LineLook& look) { return look.width == width; },
            [width](LineLook& look) { look.width = width; })
            ->setIcon(iconOf(menu.palette().color(QPalette::Text), LineDash::Solid, width));
}

void LookMenus::addColors(QMenu& menu, const QStringList& keys)
{
    constexpr const char* kNames[] = {
        QT_TRANSLATE_NOOP("Plotix", "&Sky Blue"),   QT_TRANSLATE_NOOP("Plotix", "&Orange"),
        QT_TRANSLATE_NOOP("Plotix", "&Yellow"),     QT_TRANSLATE_NOOP("Plotix", "&Pink"),
        QT_TRANSLATE_NOOP("Plotix", "Light &Gray"), QT_TRANSLATE_NOOP("Plotix", "&Blue"),
        QT_TRANSLATE_NOOP("Plotix", "&Vermilion"),  QT_TRANSLATE_NOOP("Plotix", "G&reen"),
        QT_TRANSLATE_NOOP("Plotix", "Purp&le"),     QT_TRANSLATE_NOOP("Plotix", "Gr&ay")};
    QMenu& colors = *menu.addMenu(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Color in This Trend")));
    addItem(
        colors, keys, localizedText(QT_TRANSLATE_NOOP("Plotix", "As &Usual")),
        [](const LineLook& look) { return !look.color; }, [](LineLook& look) { look.color.reset(); });
    for (std::size_t number = 0; number < std::size(kNames); ++number) {
        const QColor color = distinctLine(number).color;
        addItem(
            colors, keys, localizedText(kNames[number]), [color](const LineLook& look) { return look.color == color; },
            [color](LineLook& look) { look.color = color; })
            ->setIcon(iconOf(color, LineDash::Solid));
    }
    QAction* other = colors.addAction(localizedText(QT_TRANSLATE_NOOP("Plotix", "O&ther…")));
    connect(other, &QAction::triggered, this, [this, keys] { askForColor(keys); });
}

/// The dialog goes when it was answered; nothing is chosen for a trend that is gone by then.
void LookMenus::askForColor(const QStringList& keys)
{
    const CPTScatterPlotPtr plot = m_looks.plotOf(keys.front());
    auto* dialog = new QColorDialog(plot ? plot->dataLineStyle().color : QColor(), m_looks.window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this,
            [this, keys](const QColor& color) { changeAll(keys, [color](LineLook& look) { look.color = color; }); });
    dialog->open();
}

void LookMenus::addPoints(QMenu& menu, const QStringList& keys)
{
    QMenu& points = *menu.addMenu(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Points")));
    addItem(
        points, keys, localizedText(QT_TRANSLATE_NOOP("Plotix", "As &Usual")),
        [](const LineLook& look) { return !look.pointSize; }, [](LineLook& look) { look.pointSize.reset(); });
    for (const double size : kPointSizes)
        addItem(
            points, keys, lengthText(size), [size](const LineLook& look) { return look.pointSize == size; },
            [size](LineLook& look) { look.pointSize = size; });
}

void LookMenus::addFills(QMenu& menu, const QStringList& keys)
{
    QMenu& fills = *menu.addMenu(localizedText(QT_TRANSLATE_NOOP("Plotix", "&Fill")));
    addItem(
        fills, keys, localizedText(QT_TRANSLATE_NOOP("Plotix", "&None")),
        [](const LineLook& look) { return !look.fill; }, [](LineLook& look) { look.fill.reset(); });
    const LineFill toZero{LineFill::Kind::ToZero};
    addItem(
        fills, keys, localizedText(QT_TRANSLATE_NOOP("Plotix", "To &Zero")),
        [toZero](const LineLook& look) { return look.fill == toZero; },
        [toZero](LineLook& look) { look.fill = toZero; });
    for (const ReadLine& line : m_looks.lines()) {
        if (keys.contains(line.key))
            continue;
        const LineFill toLine{LineFill::Kind::ToLine, line.key};
        addItem(
            fills, keys, localizedText(QT_TRANSLATE_NOOP("Plotix", "To %1")).arg(itemText(line.name)),
            [toLine](const LineLook& look) { return look.fill == toLine; },
            [toLine](LineLook& look) { look.fill = toLine; });
    }
}

}  // namespace plotix
