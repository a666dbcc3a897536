#pragma once

#include "plugins/PlotixPlugIn/reading/marks/MarksLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QPointer>

#include <memory>

/// Two marks A and B at times of a trend, to read what lies between them.
///
/// Choices: "a" and "b", seconds since 1970-01-01 UTC, each missing where the mark is not set. They are set where the
/// value line stands, dragged by their flags, typed into their window, or moved by keys; every key is also an action.
/// With both set, the trend's marked span is the stretch between them. Part of a trend's reading, which *owns* it. Main
/// thread only.
namespace plotix {

class MarksPart : public ReadingPart {
    Q_OBJECT
public:
    explicit MarksPart(ReadTrend& trend);
    ~MarksPart() override;

    QString key() const override { return QStringLiteral("marks"); }  // stored: never change
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;

    void viewLoaded() override;
    void graphBuilt() override;
    void graphReleased() override;
    void plotsReplaced() override;
    void linesChanged() override;
    void clockSet() override { emit marksMoved(); }
    bool keyPressed(const QKeyEvent& event) override;
    std::vector<QAction*> actions() const override { return m_actions; }

    const MarkTimes& marks() const { return m_marks; }
    TrendLines& lines() { return m_lines; }
    const ValueTexts& texts() const { return m_texts; }
    ReadTrend& readTrend() const { return trend(); }

    void setMark(Mark mark, const std::optional<double>& time);
    void setMarkHere(Mark mark);  ///< where the value line stands, else a quarter from the picture's edges
    void removeMarks();
    enum class Move { Record, Pixel };
    void moveMark(Move move, int direction);  ///< the mark that was set or dragged last
    void fitToMarks();
    void datesFromMarks();
    void copyRange();
    void showWindow();

    bool pointerActed(QEvent& event) override;
    double heightAbovePlots() const override;

signals:
    void marksMoved();  ///< or what they mark has changed

private:
    QAction* addAction(const char* text, const QKeySequence& keys, std::function<void()> act);
    void makeActions();
    void updateActions();
    void attach();
    void takeMarks();
    void show();
    void speak();
    bool pressed(const QPointF& point);
    void dragTo(const QPointF& point);
    void hover(const QPointF& point);

    MarkTimes m_marks;
    Mark m_current = Mark::A;
    std::optional<Mark> m_dragged;
    bool m_showsGrip = false;  // the pointer is over a flag

    TrendLines m_lines;
    ValueTexts m_texts;
    PartLayer<MarksLayer> m_layer;
    QPointer<QWidget> m_window;
    std::vector<QAction*> m_actions;
    std::vector<QAction*> m_onGraph, m_onOne, m_onBoth;  // that need a graph, a mark, both
};

}  // namespace plotix
