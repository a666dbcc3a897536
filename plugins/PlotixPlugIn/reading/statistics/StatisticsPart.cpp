#include "plugins/PlotixPlugIn/reading/statistics/StatisticsPart.h"

#include "plugins/PlotixPlugIn/reading/statistics/LimitDialog.h"

#include <algorithm>

namespace plotix {

namespace {

constexpr int kMillisecondsOfAge = 1000;
constexpr int kMillisecondsOfRest = 120;

}  // namespace

/// What the table asks; all of it is the part's to answer.
class StatisticsPart::Figures : public TableFigures {
public:
    explicit Figures(StatisticsPart& part) : m_part(part) {}

    std::vector<Column> columns() const override
    {
        std::vector<Column> columns;
        for (const QString& identifier : m_part.m_choices.columns) {
            const FigureColumn* column = figureColumn(identifier);
            columns.push_back({identifier, titleOf(*column), column->kind, column->width});
        }
        for (Column& column : m_part.m_compared.columns(m_part.m_choices))
            columns.push_back(std::move(column));
        return columns;
    }
    QStringList offered() const override
    {
        QStringList identifiers;
        for (const FigureColumn& column : figureColumns())
            identifiers << QString::fromLatin1(column.identifier);
        return identifiers;
    }
    Cell cell(const QString& key, const QString& identifier) const override
    {
        if (auto compared = m_part.m_compared.cell(key, identifier))
            return std::move(*compared);
        const FigureColumn* column = figureColumn(identifier);
        return column ? m_part.m_table.cell(key, *column) : Cell();
    }
    std::optional<Own> own(const QString& key) const override { return m_part.m_table.own(key); }
    QString about() const override { return m_part.aboutText(); }
    std::optional<QString> quality(const QString& key) const override { return m_part.m_table.quality(key); }
    void select(const QString& key) override { m_part.m_currentKey = key; }
    void activate(const QString& key, const QString& identifier) override
    {
        if (const auto compared = m_part.m_compared.meant(key, identifier))
            return activate(compared->line, compared->figure);
        const FigureColumn* column = figureColumn(identifier);
        const Figure figure = column ? column->figure : Figure::MaximumTime;
        if (figure == Figure::MinimumTime || figure == Figure::MaximumTime)
            m_part.goToTime(key, figure);
        else if (figure == Figure::AboveHigh || figure == Figure::BelowLow)
            m_part.askForLimit(key, figure);
    }
    std::vector<QAction*> headerActions() const override
    {
        return m_part.m_choices.isOffered ? m_part.m_columnActions : std::vector<QAction*>();
    }
    QWidget* makeHeading(QWidget* parent) override { return m_part.makeHeading(parent); }
    void takeUp() override
    {
        if (m_part.m_resting.isActive())
            m_part.refresh();
    }
    void finish() override
    {
        m_part.refresh();
        m_part.m_keeper.finish();
    }

private:
    StatisticsPart& m_part;
};

StatisticsPart::StatisticsPart(ReadTrend& trend)
    : ReadingPart(trend),
      m_table(trend, m_keeper),
      m_compared(trend, m_table),
      m_figures(std::make_unique<Figures>(*this))
{
    makeActions();
    m_ageing.setInterval(kMillisecondsOfAge);
    connect(&m_ageing, &QTimer::timeout, m_figures.get(), &TableFigures::figuresChanged);
    m_resting.setSingleShot(true);
    m_resting.setInterval(kMillisecondsOfRest);
    connect(&m_resting, &QTimer::timeout, this, &StatisticsPart::refresh);
    for (const auto changed : {&FigureKeeper::changed, &FigureKeeper::progressed})
        connect(&m_keeper, changed, this, [this] {
            tellHeading();
            emit m_figures->figuresChanged();
        });
}

StatisticsPart::~StatisticsPart() = default;

TableFigures* StatisticsPart::tableFigures()
{
    return m_figures.get();
}

// A line that holds its values is weighted as it is drawn.
void StatisticsPart::viewLoaded()
{
    if (const ReadingPart* looks = trend().part(QStringLiteral("looks")))
        connect(looks, &ReadingPart::chosenChanged, this, &StatisticsPart::refreshSoon);
    if (const ReadingPart* missing = trend().part(QStringLiteral("missing")))  // what is not shown is not counted
        connect(missing, &ReadingPart::chosenChanged, this, &StatisticsPart::refreshSoon);
    if (KTVAnnotations* annotations = trend().annotations())
        connect(annotations, &KTVAnnotations::changed, this, &StatisticsPart::refreshSoon);
}

void StatisticsPart::clockSet()
{
    m_table.setClock(trend().clock());
    emit m_figures->figuresChanged();
}

// Figures look at the records at both ends of what is visible, and at its extremes. In memory these keep pace with a
// hand; paged ones would be unpacked move by move, and follow when it rests.
void StatisticsPart::rangeSet(CPTCoordinate coordinate)
{
    if (coordinate != CPTCoordinate::X || m_choices.over != StatisticsOver::Visible)
        return;
    if (!m_table.isPaged())
        return refreshSoon();
    m_resting.start();
    tellHeading();
}

void StatisticsPart::change(const StatisticsChoices& choices)
{
    if (choices == m_choices)
        return;
    const bool hadOtherColumns = m_choices.columns != choices.columns;
    m_choices = choices;
    checkActions();
    refresh();
    if (hadOtherColumns)
        emit m_figures->columnsChanged();
    emit chosenChanged();
}

// Many things happen in one turn of the event loop; the figures follow once, after all of them.
void StatisticsPart::refreshSoon()
{
    const bool isShown = needsFigures(m_choices) || m_heading || !m_comparisons.isEmpty();
    if (m_isRefreshing || (!isShown && m_compared.comparisons().isEmpty()))
        return;
    m_isRefreshing = true;
    QMetaObject::invokeMethod(
        this, [this] { refresh(); }, Qt::QueuedConnection);
}

void StatisticsPart::refresh()
{
    m_isRefreshing = false;
    m_resting.stop();
    m_table.ask(m_choices);
    if (const QStringList comparisons = m_compared.comparisons(); comparisons != m_comparisons) {
        m_comparisons = comparisons;
        emit m_figures->columnsChanged();
    }
    const bool showsAge = m_choices.columns.contains(QLatin1String("age"));
    if (showsAge && trend().graphView())
        m_ageing.start();
    else
        m_ageing.stop();
    tellHeading();
    emit m_figures->figuresChanged();
}

void StatisticsPart::goToExtreme(Figure figure)
{
    goToTime(currentKey(), figure);
}

void StatisticsPart::goToTime(const QString& key, Figure figure)
{
    m_figures->takeUp();
    if (!needsFigures(m_choices)) {  // the table's own numbers come without times
        StatisticsChoices choices = m_choices;
        choices.columns = {QStringLiteral("minimumTime"), QStringLiteral("maximumTime")};
        m_table.ask(choices);
        m_keeper.finish();
    }
    const auto time = m_table.timeOf(key, figure);
    m_table.ask(m_choices);
    if (!time || !trend().graph())
        return;
    holdValueLine(*time);
    bringIntoView(trend(), *time);
}

/// Where the value line stands is what one has gone to.
void StatisticsPart::holdValueLine(double time)
{
    ReadingPart* line = trend().part(QStringLiteral("valueLine"));
    if (!line)
        return;
    QVariantMap choices = line->chosen();
    choices.insert(QStringLiteral("held"), time);
    line->choose(choices);
}

void StatisticsPart::setColumn(const QString& identifier, bool isChosen)
{
    StatisticsChoices choices = m_choices;
    if (isChosen == choices.columns.contains(identifier))
        return;
    if (isChosen)
        choices.columns << identifier;
    else
        choices.columns.removeAll(identifier);
    change(choicesFromMap(mapFromChoices(choices)));  // in the table's order
    if (isChosen)
        emit m_figures->cellMeant(currentKey(), identifier);
}

// A column of times above a limit says nothing as long as no line has one: then it is asked for.
void StatisticsPart::toggleColumn(const FigureColumn& column, bool isChosen)
{
    const auto hasLimit = [&](const ReadLine& line) { return m_table.limit(line.key, column.figure).has_value(); };
    const bool countsBeyond = column.figure == Figure::AboveHigh || column.figure == Figure::BelowLow;
    if (isChosen && countsBeyond && trend().rootView() && !std::ranges::any_of(trend().lines(), hasLimit))
        askForLimit(currentKey(), column.figure);
    else
        setColumn(QString::fromLatin1(column.identifier), isChosen);
}

void StatisticsPart::setOver(StatisticsOver over)
{
    StatisticsChoices choices = m_choices;
    choices.over = over;
    change(choices);
}

void StatisticsPart::setLimit(const QString& key, Figure figure, double value)
{
    const auto line = m_table.line(key);
    StatisticsChoices choices = m_choices;
    (figure == Figure::BelowLow ? choices.lowLimits : choices.highLimits)[key] = {value, line ? line->unit : QString()};
    const FigureColumn& shown = *std::ranges::find(figureColumns(), figure, &FigureColumn::figure);
    if (!choices.columns.contains(QLatin1String(shown.identifier)))
        choices.columns << QString::fromLatin1(shown.identifier);
    change(choicesFromMap(mapFromChoices(choices)));
    emit m_figures->cellMeant(key, QString::fromLatin1(shown.identifier));
}

void StatisticsPart::removeLimits()
{
    StatisticsChoices choices = m_choices;
    choices.highLimits.clear();
    choices.lowLimits.clear();
    change(choices);
}

void StatisticsPart::askForLimit(const QString& key, Figure figure)
{
    QWidget* root = trend().rootView();
    std::vector<LimitDialog::Line> lines;
    for (const ReadLine& line : trend().lines())
        if (!line.isCompared())
            lines.push_back({line.key, line.name, line.unitSymbol, m_table.limit(line.key, figure).value_or(0)});
    if (lines.empty() || !root)
        return;
    const auto side = figure == Figure::BelowLow ? LimitDialog::Side::Below : LimitDialog::Side::Above;
    auto* dialog = new LimitDialog(side, std::move(lines), key, root);
    connect(dialog, &LimitDialog::limitGiven, this,
            [this, figure](const QString& line, double limit) { setLimit(line, figure, limit); });
    connect(dialog, &QDialog::rejected, this, &StatisticsPart::checkActions);
    dialog->open();
}

QString StatisticsPart::currentKey() const
{
    const std::vector<ReadLine> lines = trend().lines();
    const auto isCurrent = [this](const ReadLine& line) { return line.key == m_currentKey; };
    if (std::ranges::any_of(lines, isCurrent))
        return m_currentKey;
    const auto shown = std::ranges::find_if(lines, &ReadLine::isShown);
    return shown == lines.end() ? QString() : shown->key;
}

QString StatisticsPart::aboutText() const
{
    switch (m_choices.over) {
    case StatisticsOver::Fetched: return {};
    case StatisticsOver::Visible: return localizedText(QT_TRANSLATE_NOOP("Plotix", "what is visible"));
    case StatisticsOver::Marked: return localizedText(QT_TRANSLATE_NOOP("Plotix", "the time from A to B"));
    }
    return {};
}

}  // namespace plotix
