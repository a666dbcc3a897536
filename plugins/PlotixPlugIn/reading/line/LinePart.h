#pragma once

#include "plugins/PlotixPlugIn/reading/line/LineSteps.h"
#include "plugins/PlotixPlugIn/reading/line/ValueLine.h"
#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <memory>

/// Reading values: a line that follows the pointer over all lanes and says what every line reads there.
///
/// Choices: "shown" (whether the line follows the pointer) and "held" (seconds since 1970-01-01 UTC: it stands there,
/// also in pictures, on pages and in print). A click in the plots holds it where it is, a second one or Escape lets it
/// go. The keys of the focused graph move it, and every key is also an action; what is read becomes the accessible
/// description of the graph. Part of a trend's reading, which *owns* it. Main thread only.
namespace plotix {

class LinePart : public ReadingPart {
    Q_OBJECT
    /// Where the line stands now, held or not, seconds since 1970-01-01 UTC; invalid where it stands nowhere. Other
    /// parts ask for it by this name.
    Q_PROPERTY(QVariant time READ timeRead)
    /// The time under the pointer, likewise, wherever the line is held.
    Q_PROPERTY(QVariant pointed READ timePointed)
public:
    explicit LinePart(ReadTrend& trend);
    ~LinePart() override;

    QString key() const override { return QStringLiteral("valueLine"); }  // stored: never change
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;

    void viewLoaded() override;
    void graphBuilt() override;
    void graphReleased() override;
    void plotsReplaced() override;
    void linesChanged() override;
    void fitted() override { speak(); }
    void rangeSet(CPTCoordinate coordinate) override;
    void clockSet() override;
    bool keyPressed(const QKeyEvent& event) override;
    std::vector<QAction*> actions() const override { return m_actions; }

    QVariant timeRead() const;
    QVariant timePointed() const { return m_pointed ? QVariant(*m_pointed) : QVariant(); }

    bool isShown() const { return m_shown.value_or(false); }
    void setShown(const std::optional<bool>& shown);
    void hold(const std::optional<double>& time);  ///< nothing: lets go
    void step(Step step, Towards towards);         ///< holds the line where it comes to
    void followNextLine(Towards towards);          ///< after the last line come all of them
    void askForTime();
    void goTo(double time);  ///< holds the line there and shows it; records of another time are read
    void copyValues();

    bool pointerActed(QEvent& event) override;

private:
    QAction* addAction(const char* text, const QKeySequence& keys, std::function<void()> act);
    void makeActions();
    void addSteps();
    void updateActions();
    void attach();
    void place();
    void pointerMoved(const QPointF& point);
    void pointerLeft();
    void clicked(const QPointF& point);
    std::optional<double> standing() const;  ///< where the line stands
    std::optional<ReadAt> readStanding();
    ReadAt readAtLine(double time, const plotkit::GraphGeometry& geometry);
    void speak();

    std::optional<bool> m_shown;  // absent: nobody has chosen
    std::optional<double> m_held;
    std::optional<QPointF> m_pointer;
    std::optional<double> m_pointed;          // the time at the pointer
    std::optional<QPointF> m_pressed;         // where a click may have begun
    std::optional<double> m_heldBeforeClick;  // a double click is no click
    QString m_followed;                       // key of the line that the keys follow; empty: all
    std::optional<double> m_sameValue;        // what SameValue comes back to, while it is repeated
    QString m_spokenBefore;                   // the graph's description without a line
    QString m_spoken;                         // its description by the line; empty: there is none

    TrendLines m_lines;
    ValueTexts m_texts;
    PartLayer<ValueLine> m_layer;
    std::vector<QAction*> m_actions;
    std::vector<QAction*> m_reading;  // those that need a graph
    QAction* m_showAction = nullptr;
    QAction* m_holdAction = nullptr;
};

}  // namespace plotix
