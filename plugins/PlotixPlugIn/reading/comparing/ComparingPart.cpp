#include "plugins/PlotixPlugIn/reading/comparing/ComparingPart.h"

#include "plugins/PlotixPlugIn/reading/comparing/EarlierRecords.h"
#include "plugins/PlotixPlugIn/reading/values/RecordSeries.h"

#include <QtCore/QPointer>
#include <QtCore/QScopedValueRollback>

#include <algorithm>
#include <array>
#include <set>

namespace plotix {

namespace {

constexpr double kNarrower = 2.0 / 3;  // of the width of the line compared
constexpr double kFaintness = 0.62;    // opacity

/// In widths of the line; one comparison beside another has the next.
const std::array<std::vector<double>, 4> kDashes{{{4, 2.5}, {1.5, 2}, {8, 2.5, 1.5, 2.5}, {8, 2, 1.5, 2, 1.5, 2}}};

CPTLineStyle comparedStyle(CPTLineStyle style, std::size_t number)
{
    style.width *= kNarrower;
    style.color.setAlphaF(static_cast<float>(style.color.alphaF() * kFaintness));
    style.dashPattern = kDashes[number % kDashes.size()];
    for (double& length : style.dashPattern)
        length *= style.width;
    return style;
}

}  // namespace

/// One reading of the records of some comparisons. The answers share it.
struct ComparingPart::Reading {
    std::shared_ptr<RecordsRead> read = std::make_shared<RecordsRead>();
    std::map<QString, Found> found;
    std::size_t open = 1;  // answers to come, and the asking itself
    SpanRecords present;
    Beside beside = Beside::Nothing;
    bool isReplaced = false;  // by one that shows what this one was to show
    std::function<void()> show;
};

QString comparedKey(const QString& lineKey, const QString& comparison)
{
    return lineKey + QChar(0x1f) + comparison;  // no property's key has the separator
}

ComparingPart::ComparingPart(ReadTrend& trend) : ReadingPart(trend)
{
    makeActions();
    updateActions();
}

ComparingPart::~ComparingPart()
{
    stopReading();
}

void ComparingPart::viewLoaded()
{
    if (const ReadingPart* looks = trend().part(QStringLiteral("looks")))
        connect(looks, &ReadingPart::chosenChanged, this, &ComparingPart::dress);
}

void ComparingPart::change(const ComparisonChoices& choices)
{
    if (choices == m_choices)
        return;
    m_choices = choices;
    forgetUnwanted();
    updateActions();
    emit chosenChanged();
    readMissing();
}

// Other clocks are changed at other times: what was earlier by the old ones is no longer.
void ComparingPart::clockSet()
{
    m_found.clear();
    updateActions();
    show();
    if (isAwaited())
        readAgain();
    else
        readMissing();
}

void ComparingPart::readBeside(const SpanRecords& present, const std::function<void()>& show)
{
    m_asked = {present.span, present.records};
    read(Beside::Records, present, m_choices.together(), show);
}

std::vector<TimeSpan> ComparingPart::spansBeside(const TimeSpan& span) const
{
    std::vector<TimeSpan> spans;
    for (const QString& text : m_choices.together())
        if (const auto stretches = stretchesOf(*comparisonFrom(text), span, trend().zone()); !stretches.empty())
            spans.push_back(hullOf(stretches));
    return spans;
}

// Whoever reads anew wants nothing any more of what was asked before; its records are shown without comparisons.
void ComparingPart::read(Beside beside, const SpanRecords& present, const QStringList& comparisons,
                         const std::function<void()>& show)
{
    stopReading();
    if (comparisons.isEmpty())
        return show();
    const auto reading = std::make_shared<Reading>();
    reading->present = present;
    reading->beside = beside;
    reading->show = show;
    m_reading = reading;
    for (const QString& text : comparisons) {
        const auto comparison = comparisonFrom(text);
        const std::vector<EarlierStretch> stretches = stretchesOf(*comparison, present.span, trend().zone());
        const QStringList keys = m_choices.keysOf(text);
        reading->found[text] = {keys, nullptr, stretches};
        if (stretches.empty())
            continue;
        ++reading->open;
        trend().readBeside(keys, hullOf(stretches), reading->read,
                           [part = QPointer(this), reading, text, stretches](const KTVRecordDictionaryPtr& records) {
                               if (records)
                                   reading->found[text].records =
                                       recordsBeside(*records, stretches, reading->present.records.get(),
                                                     [&text](const QString& key) { return comparedKey(key, text); });
                               if (part)
                                   part->finish(reading);
                           });
    }
    finish(reading);
}

void ComparingPart::finish(const std::shared_ptr<Reading>& reading)
{
    if (--reading->open > 0)
        return;
    const bool isLatest = reading == m_reading;
    if (isLatest) {
        m_reading.reset();
        for (auto& [text, found] : reading->found)
            m_found[text] = std::move(found);
        forgetUnwanted();
    }
    // Records wait to be shown even if nobody wants their comparisons any more.
    if (isLatest || (reading->beside == Beside::Records && !reading->isReplaced))
        reading->show();
}

void ComparingPart::forgetUnwanted()
{
    const QStringList wanted = m_choices.together();
    std::erase_if(m_found, [&wanted](const auto& found) { return !wanted.contains(found.first); });
}

void ComparingPart::stopReading()
{
    if (m_reading)
        m_reading->read->isStopped = true;
    m_reading.reset();
}

// What was read for another span would be shown only in part.
void ComparingPart::readingCancelled()
{
    if (m_reading)
        m_found.clear();
    stopReading();
}

/// Whether records wait to be shown together with what is being read.
bool ComparingPart::isAwaited() const
{
    return m_reading && m_reading->beside == Beside::Records;
}

/// For all lines that are compared so; what is being read for records that wait counts.
bool ComparingPart::isFound(const QString& comparison) const
{
    const std::map<QString, Found>& all = isAwaited() ? m_reading->found : m_found;
    const auto found = all.find(comparison);
    if (found == all.end())
        return false;
    const QStringList keys = m_choices.keysOf(comparison);
    const QStringList& known = found->second.keys;
    return known.isEmpty() || (!keys.isEmpty() && std::all_of(keys.begin(), keys.end(),
                                                              [&](const QString& key) { return known.contains(key); }));
}

// A comparison chosen while records are shown: what is there stays, and only what is missing is read.
void ComparingPart::readMissing()
{
    show();
    QStringList missing;
    for (const QString& comparison : m_choices.together())
        if (!isFound(comparison))
            missing << comparison;
    if (isAwaited() && !missing.isEmpty())
        return readAgain();
    if (isAwaited() || !trend().graph())
        return;
    const auto span = spanShown();
    if (missing.isEmpty() || !span)
        return;
    trend().setBusy(true);
    read(Beside::Nothing, {*span, trend().records()}, missing, [this, missing] {
        trend().setBusy(false);
        show();
        fitValues();
        tellNothingFound(missing);
    });
}

// What was chosen while records wait for their comparisons counts for these records, and not for those still shown.
void ComparingPart::readAgain()
{
    const std::shared_ptr<Reading> before = m_reading;
    before->isReplaced = true;
    read(Beside::Records, before->present, m_choices.together(), before->show);
}

void ComparingPart::show()
{
    if (m_isShowing || !trend().graph())
        return;
    const QScopedValueRollback showing(m_isShowing, true);
    std::vector<AddedLine> added;
    for (const ReadLine& line : trend().lines())
        for (const QString& comparison : line.isCompared() ? QStringList() : m_choices.of(line.key))
            if (auto compared = addedLine(line, comparison))
                added.push_back(std::move(*compared));
    std::erase_if(m_points, [&added](const auto& points) {
        return std::none_of(added.begin(), added.end(),
                            [&](const AddedLine& each) { return each.line.key == points.first; });
    });
    trend().setAddedLines(std::move(added));
    updateActions();
    dress();
}

std::optional<AddedLine> ComparingPart::addedLine(const ReadLine& line, const QString& comparison)
{
    const auto found = m_found.find(comparison);
    const KTVRecordDictionaryPtr records = found == m_found.end() ? nullptr : found->second.records;
    const QString key = comparedKey(line.key, comparison);
    const auto column = records ? records->columnForKey(key) : nullptr;
    if (!column)
        return std::nullopt;
    if (column->unit() != line.unit)
        column->setUnit(line.unit);
    const CPTSeriesControllerPtr points = pointsOf(key, *records, *column);
    AddedLine added{line, std::make_shared<CPTScatterPlot>(), records};
    added.line.key = key;
    added.line.comparedKey = line.key;
    added.line.comparison = comparison;
    added.line.comparisonName = nameOf(*comparisonFrom(comparison), trend().clock());
    //: A line and with what it is compared: "Power, a week earlier".
    added.line.name = localizedText(QT_TRANSLATE_NOOP("Plotix", "%1, %2")).arg(line.name, added.line.comparisonName);
    added.line.hasValues = points->content()->count() > 0;
    added.line.recordedAt = [stretches = found->second.stretches](double drawn) {
        return earlierTime(stretches, drawn);
    };
    added.plot->setIdentifier(key);
    added.plot->setTitle(added.line.name);
    if (!added.line.hasValues)
        //: In heads and legends, of a line that is compared: "Power, a week earlier: nothing recorded".
        added.plot->setTitle(localizedText(QT_TRANSLATE_NOOP("Plotix", "%1: nothing recorded")).arg(added.line.name));
    added.plot->bind(CPTScatterPlotBindingXValues, points, QStringLiteral("arrangedObjects.x"));
    added.plot->bind(CPTScatterPlotBindingYValues, points, QStringLiteral("arrangedObjects.y"));
    return added;
}

CPTSeriesControllerPtr ComparingPart::pointsOf(const QString& key, const KTVRecordDictionary& records,
                                               KTVRecordColumn& column)
{
    Points& points = m_points[key];
    const auto same = column.shared_from_this();
    if (!points.controller || points.column.lock() != same || points.unit != column.unit())
        points = {same, column.unit(), std::make_shared<CPTSeriesController>(seriesOfRecords(*records.time(), column))};
    return points.controller;
}

/// As the lines they stand beside, but for colour, width and dashes.
void ComparingPart::dress()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph)
        return;
    for (const ReadLine& line : trend().lines()) {
        const CPTScatterPlotPtr own = line.isCompared() ? graph->plotWithIdentifier(line.comparedKey) : nullptr;
        const CPTScatterPlotPtr plot = graph->plotWithIdentifier(line.key);
        if (!own || !plot)
            continue;
        const auto number = static_cast<std::size_t>(m_choices.of(line.comparedKey).indexOf(line.comparison));
        const CPTLineStyle style = comparedStyle(own->dataLineStyle(), number);
        if (!(plot->dataLineStyle() == style))
            plot->setDataLineStyle(style);
        if (plot->interpolation() != own->interpolation())
            plot->setInterpolation(own->interpolation());
        if (plot->pointSize() != own->pointSize())
            plot->setPointSize(own->pointSize());
        if (plot->isHidden() != own->isHidden())
            plot->setHidden(own->isHidden());
    }
}

/// Values that would leave the picture are brought into it; times stay.
void ComparingPart::fitValues()
{
    const CPTXYGraphPtr graph = trend().graph();
    if (!graph)
        return;
    bool isInLanes = false;
    for (const ReadLine& line : trend().lines()) {
        const CPTScatterPlotPtr plot =
            line.isCompared() && line.isShown ? graph->plotWithIdentifier(line.key) : nullptr;
        const auto extent = plot && plot->series() ? plot->series()->extent() : std::nullopt;
        if (!extent)
            continue;
        const CPTPlotRange& values = graph->plotSpaceOf(*plot).yRange();
        const double lowest = std::min(values.minLimit(), static_cast<double>(extent->minY));
        const double highest = std::max(values.maxLimit(), static_cast<double>(extent->maxY));
        if (lowest == values.minLimit() && highest == values.maxLimit())
            continue;
        if (&graph->plotSpaceOf(*plot) == &graph->plotSpace())
            trend().showValues(*graph->defaultPlotSpace(), {lowest, highest - lowest});
        else
            isInLanes = true;
    }
    if (ReadingPart* lanes = isInLanes ? trend().part(QStringLiteral("arrangement")) : nullptr)
        lanes->fitted();
}

}  // namespace plotix
