#pragma once

#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QList>
#include <QtWidgets/QMenu>

#include <functional>
#include <memory>
#include <vector>

/// The parts of a trend's reading, together: the one thing by which the trend view knows of them. It passes on what the
/// trend view tells, and keeps their choices.
///
/// The trend view *owns* it, and it owns the parts. Main thread only.
namespace plotix {

class TrendReader : public QObject {
    Q_OBJECT
public:
    /// `trend` is *borrowed* and outlives it.
    explicit TrendReader(ReadTrend& trend);
    ~TrendReader() override;

    /// The choices of all parts that have some, by the keys of the parts.
    QVariantMap chosen() const;
    /// Hands each part the choices under its key; parts that are not named keep theirs.
    void choose(const QVariantMap& choices);
    /// The same, but parts that are not named have none afterwards.
    void chooseOnly(const QVariantMap& choices);

    /// The ranges of all parts, by their keys, as those of the trend itself to be put back by undo.
    QVariantMap ranges() const;
    void setRanges(const QVariantMap& ranges);

    ReadingPart* part(const QString& key) const;  ///< null when there is none
    std::vector<QAction*> actions() const;        ///< of all parts, in their order
    /// The same as people meet them: one for each menu, which shows it, and those that stand by themselves. Owned, the
    /// same on every call.
    const QList<QAction*>& menuActions();
    double heightAbovePlots() const;     ///< of the part that reaches farthest
    TableFigures* tableFigures() const;  ///< of the part that has some; null when none has

    template <class Tell, class... Arguments>
    void tell(Tell what, Arguments&&... arguments)
    {
        for (const auto& part : m_parts)
            (part.get()->*what)(arguments...);
    }

    /// Lets every part read what it shows beside these records, then calls `show`; at once where none does.
    void readBeside(const SpanRecords& present, std::function<void()> show) const;

    /// The spans of records, lists of two numbers, that are shown beside those of a span; for whoever takes the records
    /// of a trend elsewhere.
    Q_INVOKABLE QVariantList spansBeside(double from, double to) const;

    /// Tells the parts, and from now on sees keys and pointer in the graph before its view does, so that
    /// the parts may take them: the last part is asked first, since it is what lies on top.
    void viewLoaded();
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void chosenChanged();

private:
    void add(std::unique_ptr<ReadingPart> part);

    ReadTrend& m_trend;
    std::vector<std::unique_ptr<ReadingPart>> m_parts;
    std::vector<std::unique_ptr<QMenu>> m_menus;
    QList<QAction*> m_menuActions;
};

}  // namespace plotix
