#pragma once

#include "plotkit/layout/GraphGeometry.h"
#include "plugins/PlotixPlugIn/reading/notes/NotesLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QPointer>

#include <functional>
#include <memory>

/// The notes about what a trend shows, as flags above its graph.
///
/// Notes are the host's: without a host that keeps some nothing is there, and it asks for their texts. Choice: "shown",
/// false to hide them. Pointing at a flag shows its text, a double click opens it; keys go from note to note and add
/// one. Part of a trend's reading, which *owns* it. Main thread only.
namespace plotix {

class NotesPart : public ReadingPart {
    Q_OBJECT
    /// The notes of the times that the graph shows, for reports: maps with "number", "time", "text" and "author".
    Q_PROPERTY(QVariantList footnotes READ footnotes)
public:
    explicit NotesPart(ReadTrend& trend);
    ~NotesPart() override;

    QString key() const override { return QStringLiteral("notes"); }  // stored: never change
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;

    void viewLoaded() override;
    void graphBuilt() override;
    void graphReleased() override { m_layer.remove(); }
    void plotsReplaced() override { refresh(); }
    void clockSet() override { refresh(); }
    void markedSpanSet() override { updateActions(); }
    bool keyPressed(const QKeyEvent& event) override;
    std::vector<QAction*> actions() const override { return m_actions; }

    void setShown(bool isShown);
    std::vector<NumberedNote> notes() const;  ///< of this trend, whenever they are
    QVariantList footnotes() const;           ///< none while they are hidden

    void addHere();    ///< where the value line stands, else in the middle
    void addMarked();  ///< of the stretch between the marks
    void goToNext(int direction);
    void openCurrent();

    bool pointerActed(QEvent& event) override;

private:
    QAction* addAction(const char* text, const QKeySequence& keys, std::function<void()> act);
    void makeActions();
    void updateActions();
    void listen();
    void attach();
    void refresh();
    std::optional<double> standing() const;  ///< where the value line stands
    const NoteFlag* flagAt(const QPointF& point);
    void hover(const QPointF& point);
    void tell(const NoteFlag& flag);
    void makeCurrent(const NumberedNote& note);

    bool m_isShown = true;
    qint64 m_current = 0;
    QPointer<KTVAnnotations> m_annotations;
    PartLayer<NotesLayer> m_layer;
    std::vector<NoteFlag> m_flags;  // as last asked for
    bool m_isOverFlag = false;
    std::vector<QAction*> m_actions;  // children
    QAction* m_showAction = nullptr;
    QAction* m_addAction = nullptr;
    QAction* m_addMarkedAction = nullptr;
    QAction* m_listAction = nullptr;
    std::vector<QAction*> m_goActions;
};

}  // namespace plotix
