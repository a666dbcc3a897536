#include "plugins/PlotixPlugIn/reading/marks/MarksWindow.h"

#include "plugins/PlotixPlugIn/reading/marks/MarksPart.h"
#include "plugins/PlotixPlugIn/reading/trend/TypedTime.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QToolTip>

#include <cmath>

namespace plotix {

namespace {

constexpr int kLineColumn = 0;
constexpr QSize kSize(960, 320);  // points

QStringList titles()
{
    return {localizedText(QT_TRANSLATE_NOOP("Plotix", "Line")),
            QStringLiteral("A"),
            QStringLiteral("B"),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Difference")),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Slope")),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Minimum")),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Maximum")),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Average")),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Time-weighted")),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Coverage")),
            localizedText(QT_TRANSLATE_NOOP("Plotix", "Points"))};
}

QPixmap swatch(const QColor& color)
{
    QPixmap pixmap(12, 12);
    pixmap.fill(color);
    return pixmap;
}

QString plain(QString text)
{
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
}

/// A mean to four digits of the range it is of; exactly where all values are the same.
double roundedMean(double mean, const LineFigures& figures)
{
    constexpr int kFewer = 3;
    if (!(figures.range() > 0))
        return mean;
    return QByteArray::number(mean, 'f', std::max(0, decimalsOf(figures.range()) - kFewer)).toDouble();
}

}  // namespace

MarksWindow::MarksWindow(MarksPart& part, QWidget* parent) : QDialog(parent), m_part(&part)
{
    setAttribute(Qt::WA_DeleteOnClose);  // closed, it works out no figures any more
    setWindowTitle(localizedText(QT_TRANSLATE_NOOP("Plotix", "Marks and Differences")));
    auto* rows = new QVBoxLayout(this);
    auto* fields = new QFormLayout;
    rows->addLayout(fields);
    m_a = addField(this, Mark::A);
    m_b = addField(this, Mark::B);
    m_distance = new QLabel(this);
    fields->addRow(QStringLiteral("&A:"), m_a);
    fields->addRow(QStringLiteral("&B:"), m_b);
    fields->addRow(QStringLiteral("Δt:"), m_distance);
    m_table = new QTableWidget(0, int(titles().size()), this);
    m_table->setHorizontalHeaderLabels(titles());
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->setAccessibleName(windowTitle());
    rows->addWidget(m_table);
    rows->addWidget(makeButtons());
    resize(kSize);
    connect(m_part, &MarksPart::marksMoved, this, &MarksWindow::update);
    update();
}

QLineEdit* MarksWindow::addField(QWidget* above, Mark mark)
{
    auto* field = new QLineEdit(above);
    field->setPlaceholderText(localizedText(
        QT_TRANSLATE_NOOP("Plotix", "For example 14:35, last Tuesday 14:35, 3 Feb, 3 Feb 2013 8:00, now")));
    field->setMinimumWidth(field->fontMetrics().averageCharWidth() * 34);
    connect(field, &QLineEdit::textEdited, this, [this, field, mark] { judge(field, mark); });
    connect(field, &QLineEdit::editingFinished, this, [this, field, mark] { take(field, mark); });
    return field;
}

QWidget* MarksWindow::makeButtons()
{
    auto* row = new QWidget(this);
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    const auto add = [this, row, buttons](const char* text, auto act) {
        auto* button = new QPushButton(localizedText(text), row);
        button->setAutoDefault(false);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, act);
        return button;
    };
    m_onBoth = {add(QT_TRANSLATE_NOOP("Plotix", "&Fit to Marks"), [this] { m_part->fitToMarks(); }),
                add(QT_TRANSLATE_NOOP("Plotix", "&Dates from Marks"), [this] { m_part->datesFromMarks(); }),
                add(QT_TRANSLATE_NOOP("Plotix", "&Copy Range"), [this] { m_part->copyRange(); }),
                add(QT_TRANSLATE_NOOP("Plotix", "Copy &Table"),
                    [this] { QGuiApplication::clipboard()->setText(tableText()); })};
    add(QT_TRANSLATE_NOOP("Plotix", "&Remove Marks"), [this] { m_part->removeMarks(); });
    buttons->addStretch();
    add(QT_TRANSLATE_NOOP("Plotix", "Close"), [this] { close(); });
    return row;
}

QStringList MarksWindow::cellsOf(const TrendLine& line)
{
    const MarkTimes& marks = m_part->marks();
    const ValueTexts& texts = m_part->texts();
    const MarkedLine marked = markedLines({line}, marks).front();
    const auto valueText = [&](const std::optional<double>& value) {
        return value ? texts.value(*value, marked.unitSymbol)
                     : localizedText(QT_TRANSLATE_NOOP("Plotix", "not recorded"));
    };
    QStringList cells{marked.name, valueText(marked.atA), valueText(marked.atB), {}, {}};
    if (marked.hasDifference()) {
        cells[3] = texts.difference(*marked.atA, *marked.atB, marked.unitSymbol);
        cells[4] = texts.slope(*marked.atA, *marked.atB, marks.distance(), marked.unitSymbol);
    }
    const KTVRecordDictionaryPtr records = m_part->readTrend().recordsOf(line.line.key);
    const LineFigures figures = records ? m_figures.of(line, *records, marks.span()) : LineFigures();
    for (const double figure : {figures.minimum, figures.maximum, roundedMean(figures.mean, figures),
                                roundedMean(figures.straightMean, figures)})
        cells << (std::isnan(figure) ? QString() : texts.value(figure, marked.unitSymbol));
    constexpr double kPercent = 100;
    cells << (std::isnan(figures.coverage)
                  ? QString()
                  : QStringLiteral("%1 %").arg(QLocale().toString(figures.coverage * kPercent, 'g', 4)));
    cells << QLocale().toString(qlonglong(figures.points));
    return cells;
}

void MarksWindow::fillRow(int row, const QStringList& cells, const QColor& color)
{
    for (int column = 0; column < int(cells.size()); ++column) {
        auto* item = new QTableWidgetItem(cells[column]);
        item->setTextAlignment(Qt::AlignVCenter | (column == kLineColumn ? Qt::AlignLeft : Qt::AlignRight));
        if (column == kLineColumn)
            item->setIcon(swatch(color));
        m_table->setItem(row, column, item);
    }
}

void MarksWindow::update()
{
    const MarkTimes& marks = m_part->marks();
    const auto showTime = [clock = m_part->readTrend().clock()](QLineEdit* field, const std::optional<double>& time) {
        if (!field->hasFocus() || !field->isModified())
            field->setText(time ? timeForTyping(*time, clock) : QString());
    };
    showTime(m_a, marks.a);
    showTime(m_b, marks.b);
    for (QWidget* button : m_onBoth)
        button->setEnabled(marks.areBoth());
    m_distance->setText(
        marks.areBoth() ? (marks.distance() < 0 ? QStringLiteral("−") : QString()) + durationText(marks.distance())
                        : localizedText(QT_TRANSLATE_NOOP("Plotix", "Type two times, or set the marks in the graph.")));
    const std::vector<TrendLine> lines = marks.areBoth() ? m_part->lines().shown() : std::vector<TrendLine>();
    m_table->setRowCount(int(lines.size()));
    for (std::size_t index = 0; index < lines.size(); ++index)
        fillRow(int(index), cellsOf(lines[index]), lines[index].line.color);
}

void MarksWindow::judge(QLineEdit* field, Mark mark)
{
    const MarkTimes& marks = m_part->marks();
    const double shown = (mark == Mark::A ? marks.a : marks.b).value_or(marks.a.value_or(marks.b.value_or(0)));
    const CPTClock clock = m_part->readTrend().clock();
    const bool isUnderstood = field->text().isEmpty() || typedTime(field->text(), shown, clock).has_value();
    const QString why = whyNoTime(field->text(), shown, clock);
    field->setToolTip(why);
    field->setAccessibleDescription(why);
    if (!why.isEmpty())
        QToolTip::showText(field->mapToGlobal(field->rect().bottomLeft()), why, field);
    field->setStyleSheet(isUnderstood ? QString() : QStringLiteral("QLineEdit { border: 1px solid #d03030; }"));
}

void MarksWindow::take(QLineEdit* field, Mark mark)
{
    if (!field->isModified())
        return;
    const MarkTimes marks = m_part->marks();
    const std::optional<double> other = mark == Mark::A ? marks.b : marks.a;
    const std::optional<double> own = mark == Mark::A ? marks.a : marks.b;
    const double now = double(QDateTime::currentSecsSinceEpoch());
    const auto time = typedTime(field->text(), own.value_or(other.value_or(now)), m_part->readTrend().clock());
    if (!time && !field->text().isEmpty())
        return;  // it stays marked
    field->setModified(false);
    m_part->setMark(mark, time);
}

QString MarksWindow::tableText() const
{
    QString text = titles().join(QLatin1Char('\t')) + QLatin1Char('\n');
    for (int row = 0; row < m_table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < m_table->columnCount(); ++column)
            cells << plain(m_table->item(row, column)->text());
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

}  // namespace plotix
