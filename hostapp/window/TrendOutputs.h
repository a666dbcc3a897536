#pragma once

#include "hostapp/site/WorkingSite.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"

#include <QtCore/QObject>

#include <functional>

class QWidget;

/// What leaves a site window of the trend in front: files, printed pages, and what goes into the clipboard.
///
/// Whatever leaves the screen states the span of what it draws, so dates, graph and records are brought together first,
/// while the user may give up. Records are written on a worker thread with their progress in front; a file appears
/// whole or not at all, and an alert says what failed. The window *owns* it; it *borrows* what is around it, which
/// outlives it. All but `exportRecords` require a trend in front. Main thread only.
///
///   pictures and records into files        TrendOutputs.cpp
///   the report, on paper and as a PDF      TrendOutputs_Print.cpp
///   the trend as a site of its own         TrendOutputs_Case.cpp
///   into the clipboard                     TrendOutputs_Copying.cpp
namespace plotix {

class DesktopUserInterface;
class RecordExportTask;

class TrendOutputs : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        WorkingSite& site;
        DesktopUserInterface& userInterface;         ///< asks where to save, and tells what failed
        std::function<QWidget*()> windowInFront;     ///< where it asks
        std::function<KTVPlugInPtr()> trendInFront;  ///< what the menus act on; may answer null
        std::function<bool()> wantsClassicReport;    ///< in the view's own form
    };
    explicit TrendOutputs(Surroundings around, QObject* parent = nullptr);

    /// Has the view write a picture in its own form; `operation` is the view's.
    void exportGraph(const char* operation);
    void exportPicture();
    void exportRecords();
    void exportReport();
    void printReport();
    /// Asks for the span, and writes the trend with its records and notes into a site of its own.
    void saveCase();

    void copyPicture();
    void copyLink();
    void copyMarkedLink();  ///< to the stretch between the marks A and B
    void copyRecords();

signals:
    void told(const QString& message);  ///< briefly, for a status bar

private:
    bool settle(const KTVPlugInPtr& plugIn, Wanted wanted);
    bool waitForRecords();
    void start(RecordExportTask* task, const QString& fileName);
    void writeCaseOf(const KTVPlugIn& trend, const MomentSpan& span, const QString& path);
    void putLinkTo(const ShownView& view);
    void alert(const QString& message, const QString& text);

    Surroundings m_around;
};

}  // namespace plotix
