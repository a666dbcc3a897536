#pragma once

#include "plugins/PlotixPlugIn/reading/comparing/Comparison.h"
#include "plugins/PlotixPlugIn/reading/comparing/ComparisonChoices.h"
#include "plugins/PlotixPlugIn/reading/comparing/EarlierTimes.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <map>
#include <memory>

/// The lines of a trend beside what they were earlier: the part of a trend's reading with the key "comparing".
///
/// Every line that is compared has another one for each comparison, named after it ("Power, a week earlier"), fainter,
/// dashed, hidden with it, in its lane and its unit. Their records are read as the trend's own are, right after these
/// and before both are shown; only where a comparison is chosen later, its records are read alone. Choices: see
/// ComparisonChoices.h. *Owned* by the trend's reader. Main thread only.
namespace plotix {

class ComparingPart : public ReadingPart {
    Q_OBJECT
public:
    explicit ComparingPart(ReadTrend& trend);
    ~ComparingPart() override;

    QString key() const override { return QStringLiteral("comparing"); }  // stored: never change
    QVariantMap chosen() const override { return mapFromChoices(m_choices); }
    void choose(const QVariantMap& choices) override { change(comparisonChoicesFrom(choices)); }

    void viewLoaded() override;
    void plotsReplaced() override { show(); }
    void clockSet() override;
    void fitted() override { dress(); }
    void linesChanged() override { dress(); }
    void restyled() override { dress(); }
    void markedSpanSet() override { updateActions(); }
    void readBeside(const SpanRecords& present, const std::function<void()>& show) override;
    void readingCancelled() override;
    std::vector<TimeSpan> spansBeside(const TimeSpan& span) const override;
    bool keyPressed(const QKeyEvent& event) override;
    std::vector<QAction*> actions() const override { return m_actions; }
    void addLineItems(QMenu& menu, const QStringList& keys) override;

    const ComparisonChoices& choices() const { return m_choices; }
    void change(const ComparisonChoices& choices);
    /// Asks for distances, typed, to compare all lines with.
    void askForDistances();
    /// Lays the span between the marks over the times from `at` on, of all lines. Without marks nothing.
    void layMarkedSpan(double at);
    /// Asks where to lay it.
    void askWhereToLay();

private:
    struct Reading;
    /// What was read for a comparison.
    struct Found {
        QStringList keys;                       ///< of the properties; empty: all
        KTVRecordDictionaryPtr records;         ///< at present times, under the keys of the compared lines; may be null
        std::vector<EarlierStretch> stretches;  ///< that they were moved by
    };
    /// The points of a compared line, and from what they were made.
    struct Points {
        std::weak_ptr<const KTVRecordColumn> column;
        QString unit;
        CPTSeriesControllerPtr controller;
    };

    enum class Beside { Nothing, Records };  ///< Records: others are shown together with what is read
    void read(Beside beside, const SpanRecords& present, const QStringList& comparisons,
              const std::function<void()>& show);
    void readAgain();
    bool isAwaited() const;
    void forgetUnwanted();
    void stopReading();
    void finish(const std::shared_ptr<Reading>& reading);
    /// Records, and the span they were asked for.
    struct Asked {
        TimeSpan span;
        std::weak_ptr<KTVRecordDictionary> records;
    };

    void readMissing();
    std::optional<TimeSpan> spanShown() const;
    bool isFound(const QString& comparison) const;
    void show();
    std::optional<AddedLine> addedLine(const ReadLine& line, const QString& comparison);
    CPTSeriesControllerPtr pointsOf(const QString& key, const KTVRecordDictionary& records, KTVRecordColumn& column);
    bool isWithoutValues(const QString& comparison) const;
    bool isBeyondRecords(const QString& comparison) const;
    void tellNothingFound(const QStringList& comparisons) const;
    QString itemText(const QString& comparison) const;
    void dress();
    void fitValues();
    std::optional<double> standing() const;
    void makeActions();
    void updateActions();

    ComparisonChoices m_choices;
    std::map<QString, Found> m_found;    // by the texts of the comparisons
    Asked m_asked;                       // the latest that came
    std::shared_ptr<Reading> m_reading;  // the latest one; null: none is under way
    std::map<QString, Points> m_points;  // of the lines shown, by their keys
    bool m_isShowing = false;
    std::vector<QAction*> m_actions;  // children
    std::vector<QAction*> m_usual;    // those of usual distances, which their data name
    QAction* m_nothing = nullptr;
    std::vector<QAction*> m_onMarks;  // that need both marks
};

/// The key of the line that shows another one's property at other times.
QString comparedKey(const QString& lineKey, const QString& comparison);

}  // namespace plotix
