#pragma once

#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtCore/QVariantMap>
#include <QtGui/QPainter>

#include <optional>
#include <utility>
#include <vector>

/// Operations of a plug-in beyond its base class, found by name the way a menu finds its action.
///
/// The host knows no plug-in class: it asks the meta-object. Free functions; main thread only. A null plug-in has no
/// operations.
namespace plotix {

/// Whether the plug-in has the action `name`, which takes its sender: "refresh" means refresh(QObject*).
bool respondsToAction(const KTVPlugIn* plugIn, const char* name);

/// Sends the action; false when the plug-in does not have it. `sender` is borrowed for the call.
bool sendAction(KTVPlugIn* plugIn, const char* name, QObject* sender);

/// The plug-in's graph at `size` points, `density` pixels a point, with `title` above it (empty: none). Null when the
/// plug-in draws no graph or holds no data yet.
QImage graphImage(KTVPlugIn* plugIn, const QSizeF& size, double density, const QString& title);

/// Whether the plug-in can be asked for its graph at all.
bool drawsGraph(const KTVPlugIn* plugIn);

/// The same as a vector PDF; empty when there is none.
QByteArray graphPDF(KTVPlugIn* plugIn, const QSizeF& size, const QString& title);

/// The graph as a file, see KTVPlotixPlugIn::graphFile; nothing when the plug-in has no such operation.
std::optional<QByteArray> graphFile(KTVPlugIn* plugIn, const QVariantMap& figure);

/// Whether the plug-in can tell which range it shows, and show another one. Ranges are seconds since 1970-01-01 UTC.
bool canShowRange(const KTVPlugIn* plugIn);
std::optional<std::pair<double, double>> shownRange(const KTVPlugIn* plugIn);      ///< nothing when it cannot tell
std::optional<std::pair<double, double>> refreshedRange(const KTVPlugIn* plugIn);  ///< that its last refresh asked for
void showRange(KTVPlugIn* plugIn, double from, double to);  ///< shown some time later; one that cannot: nothing

/// Has the records of a range read while the graph stays where it is; one that cannot: nothing.
void readRange(KTVPlugIn* plugIn, double from, double to);

/// The spans of records that the plug-in shows beside those of a span, such as the same a week earlier; one that tells
/// none: none.
std::vector<std::pair<double, double>> spansBeside(const KTVPlugIn* plugIn, double from, double to);

/// The object that tells what is read, drawn and chosen, owned by the plug-in; null when there is none. Its operations:
QObject* readSpansOf(const KTVPlugIn* plugIn);
QVariantMap spansTold(const KTVPlugIn* plugIn);                               ///< empty when it cannot tell
void sendToReadSpans(KTVPlugIn* plugIn, const char* operation);               ///< one it does not have: nothing
void sendToReadSpans(KTVPlugIn* plugIn, const char* operation, bool chosen);  ///< likewise

/// Whether the plug-in gives what a page of the host's own report shows.
bool canPrintOnPage(const KTVPlugIn* plugIn);
QVariantMap reportContents(KTVPlugIn* plugIn);  ///< as the plug-in's operation of this name; empty: nothing to show
void drawGraphOnPaper(KTVPlugIn* plugIn, QPainter& painter, const QRectF& rect);  ///< points, dark on white

/// The notes about the times that the plug-in shows, each as text: "3  6 May 2024 14:00: Pump replaced (Ada)". None for
/// one that tells none.
std::vector<QString> footnoteTexts(const KTVPlugIn& plugIn);

/// Whether records of what the plug-in has drawn could not be read; false for one that cannot tell.
bool lacksRecords(const KTVPlugIn* plugIn);

/// The plug-in's options of reading that were chosen, by name; nothing when it has no such options.
std::optional<QVariantMap> reading(const KTVPlugIn* plugIn);
void setReading(KTVPlugIn* plugIn, const QVariantMap& options);  ///< one that has none: nothing
/// What people can do with what the plug-in offers for reading it, as actions for menus; owned by the plug-in. None for
/// one that offers nothing.
QList<QAction*> readingActions(const KTVPlugIn* plugIn);

/// The columns that its table of statistics can have beyond its own, by name; empty for one that has none.
QStringList figureColumns(const KTVPlugIn* plugIn);

/// What the user can change in the plug-in, such as its properties and its range, as a value to compare and to put
/// back; empty for one that offers none.
QVariantMap changeableState(const KTVPlugIn* plugIn);
void changeTo(KTVPlugIn* plugIn, const QVariantMap& state);

/// The keys of its properties, in order, read from that state; `shownKeys`: of those whose lines are not hidden.
QStringList plottedKeys(const KTVPlugIn* plugIn);
QStringList shownKeys(const KTVPlugIn* plugIn);

/// The graph without a title, for the pages of a report.
QImage graphForPaper(KTVPlugIn* plugIn, const QSizeF& size, double density);

}  // namespace plotix
