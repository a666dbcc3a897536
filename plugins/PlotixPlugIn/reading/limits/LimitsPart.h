#pragma once

#include "plugins/PlotixPlugIn/reading/limits/LimitsLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/PartLayer.h"
#include "plugins/PlotixPlugIn/reading/trend/ReadingPart.h"

#include <QtCore/QPointer>
#include <QtWidgets/QMenu>

#include <memory>

/// The limits of the properties that a trend shows, drawn over their lines.
///
/// Limits are the host's: without a host that has some nothing is there. Choice: "shown", false to hide them. They
/// never count when values are fitted, so that a far one moves nothing; an action widens the values once. Part of a
/// trend's reading, which *owns* it. Main thread only.
namespace plotix {

class LimitsPart : public ReadingPart {
    Q_OBJECT
public:
    explicit LimitsPart(ReadTrend& trend);
    ~LimitsPart() override;

    QString key() const override { return QStringLiteral("limits"); }  // stored: never change
    QVariantMap chosen() const override;
    void choose(const QVariantMap& choices) override;

    void viewLoaded() override { listen(); }
    void graphBuilt() override;
    void graphReleased() override { m_layer.remove(); }
    void plotsReplaced() override;
    void linesChanged() override;
    std::vector<QAction*> actions() const override { return m_actions; }
    void addRowItems(QMenu& menu, const QStringList& keys) override;

    void setShown(bool isShown);
    void widenToLimits();  ///< the values shown, until they are all within them

private:
    QAction* addAction(const char* text);
    void makeActions();
    void updateActions();
    void listen();
    void attach();
    void refresh();
    bool hasLimits();
    void edit(const QString& key);

    bool m_isShown = true;
    TrendLines m_lines;
    QPointer<KTVAnnotations> m_annotations;
    PartLayer<LimitsLayer> m_layer;
    std::unique_ptr<QMenu> m_linesMenu;
    std::vector<QAction*> m_actions;  // children
    QAction* m_showAction = nullptr;
    QAction* m_widenAction = nullptr;
    QAction* m_editAction = nullptr;
};

}  // namespace plotix
