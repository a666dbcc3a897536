#pragma once

#include "base/KTVArrayController.h"
#include "plotkit/model/CPTXYGraph.h"
#include "plugins/PlotixPlugIn/InfoTableRow.h"
#include "plugins/PlotixPlugIn/KTVDataClusterViewController.h"
#include "plugins/PlotixPlugIn/KTVGraphHostingView.h"
#include "plugins/PlotixPlugIn/PropertyDetailsTableView.h"
#include "plugins/PlotixPlugIn/PropertyDragDropView.h"
#include "plugins/PlotixPlugIn/RangeNotice.h"
#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"
#include "plugins/PlotixPlugIn/host/KTVUserInterface.h"
#include "plugins/PlotixPlugIn/host/KTVWebUIDelegate.h"
#include "plugins/PlotixPlugIn/reading/OutsideLines.h"
#include "plugins/PlotixPlugIn/reading/ReadingOptions.h"

#include <QtGui/QPainter>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

class LineMenu;
class TrendViewArrangement;
namespace plotix {
class ReadSpans;
class TrendReader;
}  // namespace plotix
class TrendAccess;

/// The tag of observations of a property's "color".
inline constexpr ObservationTag kPropertyColor{"color"};

/// The trend view: plots a set of properties of one agent over a date range, with a statistics table below.
///
/// One class, one file per topic:
///
///   construction, archive, view setup, teardown, description    KTVPlotixPlugIn.cpp
///   fetching records, what happens with the answer              KTVPlotixPlugIn_Acquisition.cpp
///   records to series and plots (updatePlotData)                KTVPlotixPlugIn_Series.cpp
///   the graph and the styling of its axes                       KTVPlotixPlugIn_Graph.cpp
///   tick intervals, label formats, the fit                      KTVPlotixPlugIn_Axes.cpp
///   zoom, pan, window resizing                                  KTVPlotixPlugIn_ZoomPan.cpp
///   showing a range while records arrive                        KTVPlotixPlugIn_Following.cpp
///   images, PDF, off-screen rendering, sharing                  KTVPlotixPlugIn_Export.cpp
///   pictures for a host, also with choices of their own         KTVPlotixPlugIn_Figures.cpp
///   the statistics table                                        KTVPlotixPlugIn_InfoTable.cpp
///   adding and removing properties                              KTVPlotixPlugIn_PropertySet.cpp
///   following unit and colour changes, the tool tip             KTVPlotixPlugIn_Observation.cpp
///   the printed report: page setup, HTML, header and footer     KTVPlotixPlugIn_Report.cpp
///   the graph and its figures for a host's own paper            KTVPlotixPlugIn_Paper.cpp
///   the collapsible details panel                               KTVPlotixPlugIn_DetailsPanel.cpp
///   options that make it easier to read                         KTVPlotixPlugIn_Reading.cpp
///
/// What goes beyond the contract is no topic of this class: it is a part under `reading/`. `TrendReader` is the one
/// attachment by which this class tells them what happens; `TrendAccess` is how they see this class.
///
/// A field is written by one file, named beside it, apart from construction and decoding. Two exceptions: the Graph
/// file makes `binders` together with the graph and the Series file fills it; PropertySet removes rows from
/// `infoTableArray` through the array controller, and Observation recolours them.
///
/// Held by shared_ptr: the host *shares* it; an off-screen one is kept alive by its pending fetch alone. Outlets are
/// weak and null while no view is loaded; every operation is safe then. Main thread only.
class KTVPlotixPlugIn : public KTVPlugIn,
                        public CPTPlotSpaceDelegate,
                        public CPTPlotDelegate,
                        public KTVPropertyObserver,
                        public KTVGraphHostingViewKeyDelegate,
                        public KTVDataClusterViewControllerDelegate,
                        public PropertyDropProtocol,
                        public PropertyDetailsTableViewDelegate,
                        public KTVSharingPickerDelegate,
                        public KTVWebUIDelegate {
    Q_OBJECT
public:
    using Ptr = std::shared_ptr<KTVPlotixPlugIn>;
    using Tables = std::optional<KTVPropertyList>;
    using OptionalDate = plotix::OptionalDate;
    using Binders = std::map<QString, CPTSeriesControllerPtr>;

    // Construction: null when the base declines. Absent tables mean something else than empty ones.
    static Ptr initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController);
    static Ptr initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController, const Tables& tables);
    static Ptr initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController, const Tables& tables,
                             const OptionalDate& fromDate, const OptionalDate& toDate);
    static Ptr initWithCoder(KTVDecoder& decoder);
    ~KTVPlotixPlugIn() override;

    void encodeWithCoder(KTVEncoder& encoder) const override;

    // Description.
    QString name() const override;
    QString textDescription() const override;
    QIcon icon() const override;
    QString bundleIdentifier() const override;
    int bundleVersion() const override;
    std::optional<QString> bundleShortVersion() const override;
    std::optional<QString> group() const override;
    bool isDeletable() const override { return true; }
    bool isRenamable() const override { return true; }
    bool isUndockable() const override { return true; }
    Q_INVOKABLE void helpButtonAction(QObject* sender);

    // Acquisition.
    void acquirePlotFromDate(const OptionalDate& fromDate, const OptionalDate& toDate);
    void doValidDataSource(const KTVRecordDictionaryPtr& records, const std::optional<KTVError>& error);
    Q_INVOKABLE void refreshPlot() override;
    Q_INVOKABLE void refresh(QObject* sender) override;
    Q_INVOKABLE void cancel(QObject* sender) override;
    void dateChanged(QObject* sender) override;

    // Series.
    void updatePlotData(const KTVRecordDictionaryPtr& records);

    // Graph.
    void setupXAxis();
    void setupYAxis();

    // Axes. Spans are seconds on x, value units on y.
    void adjustXAxis();
    void adjustYAxis();
    void adjustYAxisWithRange(const CPTPlotRange& range);
    double computeOptimalMajorIntervalForRangeWithSpan(double span) const;
    double computeOptimalMajorIntervalForDomainWithTimeSpan(double span) const;
    double computeOptimalMinorIntervalForDomainWithTimeSpan(double span) const;

    // Zoom and pan.
    bool plotSpaceShouldScaleBy(CPTXYPlotSpace* space, double factor, QPointF aboutPoint) override;
    CPTPlotRange plotSpaceWillChangePlotRangeTo(CPTXYPlotSpace* space, const CPTPlotRange& range,
                                                CPTCoordinate coordinate) override;
    void plotSpaceDidChangePlotRangeForCoordinate(CPTXYPlotSpace* space, CPTCoordinate coordinate) override;
    bool plotSpaceShouldHandlePointingDeviceUpEvent(CPTXYPlotSpace* space, QPointF atPoint) override;
    bool plotSpaceShouldHandlePointingDeviceCancelledEvent(CPTXYPlotSpace* space) override;
    void windowDidEndLiveResize(QObject* notification);
    Q_INVOKABLE void fitAll(QObject* sender);  ///< shows everything the plots hold; without a graph nothing happens

    // Following. Seconds since 1970-01-01 UTC.
    Q_INVOKABLE void showRange(double fromSeconds, double toSeconds);  ///< fetches quietly; reversed: nothing happens
    Q_INVOKABLE void readRange(double fromSeconds, double toSeconds);  ///< the same, but the ranges shown stay
    Q_INVOKABLE QVariantList shownRange() const;  ///< the date panel's two dates; empty when one is absent
    Q_INVOKABLE QVariantList
    refreshedRange() const;  ///< the two dates of the last refresh, before its records moved them

    // Changes of the user, as a value: properties, hidden lines, range. The names in it are not stored anywhere.
    Q_INVOKABLE QVariantMap changeable() const;
    Q_INVOKABLE void changeTo(const QVariantMap& state);  ///< fetches if properties come back

    Q_INVOKABLE QObject* readSpans() const;  ///< a plotix::ReadSpans; owned, never null
    // Reading. Options by name, see reading/ReadingOptions.h; unknown ones are passed over.
    Q_INVOKABLE void setReading(const QVariantMap& options);  ///< chooses these and leaves the others
    Q_INVOKABLE QVariantMap reading() const;                  ///< those that were chosen
    Q_INVOKABLE QStringList
    figureColumns() const;  ///< what the table can have beyond its own columns; for "statistics"
    /// What people can do with the parts of the reading, for a host's menus; owned by the trend. See ReadingPart.h.
    Q_INVOKABLE QList<QAction*> readingActions() const;
    Q_INVOKABLE QObject* trendReader() const;  ///< a plotix::TrendReader; owned, never null
    /// Lifts the limits of the value range for this trend and fits it to all values; without a graph it only lifts
    /// them.
    Q_INVOKABLE void showValuesScaled(QObject* sender);

    // Export. Sizes are points.
    Q_INVOKABLE void exportToPDF(QObject* sender);
    Q_INVOKABLE void exportToPNG(QObject* sender);
    QByteArray PNGDataWithSize(const QSizeF& size);
    QImage plotImageForSize(const QSizeF& size, const QString& title);
    void didFinishDrawing(CPTScatterPlot* plot) override;
    void didFinishDrawing();
    Q_INVOKABLE void sharingButtonClicked(QObject* sender);

    /// Renders the properties named, off screen; the PNG data reach the target's method `selector`, which takes one
    /// QByteArray. Absent names, or none that the agent has: the target is never called. Borrows the target.
    static void graph(const KTVAgentPtr& agent, const OptionalDate& fromDate, const OptionalDate& toDate,
                      const std::optional<QStringList>& properties, const QString& title, const QSizeF& size,
                      QObject* target, const QByteArray& selector);

    /// The graph as it is, drawn at `size` with `title` above it (empty: none); the screen is unchanged afterwards.
    /// Null, or empty, before the first rebuild and for empty sizes.
    Q_INVOKABLE QImage graphImageWithSize(const QSizeF& size, double density, const QString& title);
    Q_INVOKABLE QByteArray graphPDFWithSize(const QSizeF& size, const QString& title);

    /// The same as a file: "format" ("png", "pdf", "svg"), "size" (QSizeF, points), "density" (of a PNG, pixels a
    /// point), "title", "reading": choices for this file alone, by the keys of the parts. Missing ones are those of the
    /// trend.
    Q_INVOKABLE QByteArray graphFile(const QVariantMap& figure);

    /// For a report of the host's own: "rows" of the lines shown ("name", "unit", "color", "minimum", "maximum",
    /// "average", "points", and "figures": texts under "figureTitles"), "about" (what they are about, empty: all
    /// records), "from" and "to" of the graph as it is drawn and "firstRecord" and "lastRecord" of what the
    /// rows are about (seconds since 1970-01-01 UTC), "unitsInGraph" (whether its heads name them), "siteName",
    /// "siteLocation". Empty while there is no graph.
    Q_INVOKABLE QVariantMap reportContents() const;
    /// The notes of the times shown: maps with "number", "time", "text" and "author"; also "notes" of the above.
    Q_INVOKABLE QVariantList footnotes() const;
    Q_INVOKABLE bool lacksRecords() const;  ///< some of what was asked for could not be read
    Q_INVOKABLE void drawGraphOnPaper(QPainter* painter, const QRectF& rect);  ///< points; dark on white, no titles

    // Statistics table.
    Q_INVOKABLE void updateInfoTable();  ///< works out the rows anew, from the records shown
    void setPlotForPropertyName(const QString& propertyName, bool hidden);
    Q_INVOKABLE void showClicked(QObject* sender);
    Q_INVOKABLE void copyTable(QObject* sender);  ///< see PropertyDetailsTableView::copyRows; without a view nothing

    // Property set.
    void addProperties(const QStringList& propertyNames) override;
    bool removePropertiesAndRefresh(const QStringList& names);
    void markDeletedRows(const std::vector<std::size_t>& indexes) override;
    bool removeDeletedRows() override;
    QString dragType() const override;
    quint64 draggingEntered(QObject* sender);

    // Observation.
    void addObservers(const KTVAgentPtr& agent);
    void removeObservers(const KTVAgentPtr& agent);
    void observeValueForKeyPath(const QString& keyPath, KTVProperty* object, const KTVPropertyChange& change,
                                ObservationTag context) override;
    void setUnit(const QString& unit, const QString& propertyName);
    void setValue(const QVariant& value);
    void updateToolTip();

    // Report. Writing it resizes the hosting view and changes the shared print settings, both for good.
    KTVPrintInfo* customPrintInfo() override;
    std::optional<QString> htmlContentForPrinting() override;
    float webViewHeaderHeight(QObject* webView) override;
    float webViewFooterHeight(QObject* webView) override;
    void webViewDrawHeaderInRect(QObject* webView, const QRectF& rect) override;
    void webViewDrawFooterInRect(QObject* webView, const QRectF& rect) override;

    // Details panel.
    Q_INVOKABLE void propertyDetailsDisclosureButtonAction(QObject* sender);
    void showPropertyDetailsView();
    void hidePropertyDetailsView();
    void animationDidEnd(QObject* animation);

    // Fields.
    const Tables& properties() const { return m_properties; }
    const OptionalDate& fromDate() const { return m_fromDate; }
    void setFromDate(const OptionalDate& date) { m_fromDate = date; }  ///< counts until the view is loaded
    const OptionalDate& toDate() const { return m_toDate; }
    void setToDate(const OptionalDate& date) { m_toDate = date; }
    const KTVDataClusterViewController::Pointer& dataClusterViewController() const { return m_dataCluster; }
    bool propertyDetailsShowing() const { return m_propertyDetailsShowing; }
    const std::optional<CPTPlotRange>& plotRangeForY() const { return m_plotRangeForY; }
    const InfoTableArrayPtr& infoTableArray() const { return m_infoTableArray; }
    const QStringList& deletionArray() const { return m_deletionArray; }
    const std::optional<QVariantMap>& tableColumns() const { return m_tableColumns; }
    const std::optional<std::map<QString, int>>& infoTablePropertyShowMapping() const { return m_showMapping; }
    const KTVRecordDictionaryPtr& plotData() const { return m_plotData; }
    const std::optional<Binders>& binders() const { return m_binders; }
    const std::optional<std::map<QString, QColor>>& colorNameDictionary() const { return m_colorNameDictionary; }
    const CPTXYGraphPtr& graph() const { return m_graph; }
    KTVMessageViewController* messageViewController() const { return m_messageViewController.get(); }
    bool observersAdded() const { return m_observersAdded; }
    bool plotReady() const { return m_plotReady; }
    QObject* completionTarget() const { return m_completionTarget; }
    void setCompletionTarget(QObject* target) { m_completionTarget = target; }
    const QByteArray& completionSelector() const { return m_completionSelector; }
    void setCompletionSelector(const QByteArray& selector) { m_completionSelector = selector; }
    const QString& graphTitle() const { return m_graphTitle; }
    void setGraphTitle(const QString& title) { m_graphTitle = title; }
    const QString& imageSize() const { return m_imageSize; }
    void setImageSize(const QString& size) { m_imageSize = size; }
    const std::shared_ptr<QObject>& webView() const { return m_webView; }
    void setWebView(std::shared_ptr<QObject> view) { m_webView = std::move(view); }

    // Outlets.
    KTVGraphHostingView* hostView() const { return m_hostView; }
    QWidget* dataClusterHostView() const { return m_dataClusterHostView; }
    PropertyDragDropView* dragDropView() const { return m_dragDropView; }
    PropertyDetailsTableView* infoTable() const { return m_infoTable; }
    InfoTableArrayController* infoTableArrayController() const { return m_infoTableArrayController.get(); }
    QWidget* propertyDetailsView() const { return m_propertyDetailsView; }
    QAbstractButton* propertyDetailsDisclosureButton() const { return m_propertyDetailsDisclosureButton; }
    QLabel* propertyDetailsTextField() const { return m_propertyDetailsTextField; }
    QAbstractButton* sharingButton() const { return m_sharingButton; }
    RangeNotice* rangeNotice() const { return m_rangeNotice; }  ///< null until there was something to tell

protected:
    QWidget* loadView() override;
    void viewDidLoad() override;

private:
    friend class TrendAccess;
    enum class Rebuild { First, Later };
    using SeriesDictionary = std::map<QString, CPTPointSeriesPtr>;

    KTVPlotixPlugIn();
    void initCommon();
    void decodeFields(KTVDecoder& decoder);
    void connectActions();
    void addTableHeading();

    /// Binds the info table's columns to the rows and its check boxes to `showClicked`; once, when the view is loaded.
    void connectInfoTable();
    QStringList copiedHeading() const;
    std::optional<std::pair<double, double>> figuredSpan(const QString& over) const;  // of the table's figures
    /// Keeps the parts of the view in place when the root view is resized; follows an animation under way.
    void rootViewDidResize(const QSize& oldSize, const QSize& newSize);
    void fitDatePanel();
    TrendViewArrangement* arrangement();
    void mergeInfoTableRow(const KTVProperty& property);  ///< recomputes one property's row
    void removePlotOfProperty(const QString& propertyName);
    void removeRowNamed(const QString& tableName);
    void observeProperty(KTVProperty& property);  ///< "unit" and "color"
    void takePropertyColors();
    void applyLineCommands();
    QColor lineColor(const QString& key, const KTVRecordColumn& column) const;
    void recolorPlot(const KTVProperty& property);
    void recolorRows(const QString& propertyName, const QColor& color);

    void refuseDateRange();
    void requestRecords(const OptionalDate& fromDate, const OptionalDate& toDate);
    using RecordsHandler =
        std::function<void(KTVPlotixPlugIn&, const KTVRecordDictionaryPtr&, const std::optional<KTVError>&)>;
    /// Reads records to be shown: the handler is called on the main thread, unless this object is gone by then.
    void fetchRecords(const OptionalDate& fromDate, const OptionalDate& toDate, RecordsHandler handler);
    /// The same for any properties, shown or not; answers false, and asks nothing, without an archive.
    bool askArchive(const Tables& properties, const OptionalDate& fromDate, const OptionalDate& toDate,
                    KTVArchiveManager::ProgressHandler progress, RecordsHandler handler);
    void showRecordsInRange(const KTVRecordDictionaryPtr& records, const CPTPlotRange& range);
    void showRecordsBeneath(const KTVRecordDictionaryPtr& records, const OptionalDate& from, const OptionalDate& to);
    void tellShown(const KTVRecordDictionary& records, const OptionalDate& from, const OptionalDate& to);
    void applyReading();
    void connectLooks();
    QColor shownColor(const InfoTableRow& row) const;
    CPTScatterPlotPtr lookedPlot(const QString& propertyName) const;  // null: it looks as it always did
    bool changeProperties(const QStringList& keys);                   // whether records are fetched
    void changeHidden(const QStringList& hidden);
    void styleAxesPlainly();
    void updateRangeNotice();
    std::vector<plotix::LineReach> linesShown() const;
    plotix::OutsideLines linesOutside() const;  ///< requires a graph
    void buildGraph();
    void addPlot(const QString& key, const QColor& lineColor, const CPTSeriesControllerPtr& binder);
    void releaseGraph();
    CPTXYAxisSet* hostedAxisSet() const;  ///< of the graph the hosting view shows; null off screen
    SeriesDictionary buildSeries(const KTVRecordDictionary& records);
    std::size_t addPlots(const KTVRecordDictionary& records, const SeriesDictionary& series);
    void fitPlots(Rebuild rebuild);
    void showDataMessages(const KTVRecordDictionary& records);
    void showMessage(const QString& message);
    void removeMessageOverlay();
    void sendImageToCompletionTarget();
    void writeToChosenFile(const QString& fileType, const std::function<QByteArray()>& makeData);

    Tables m_properties;                                             // shares; PropertySet. Absent is not empty
    OptionalDate m_fromDate;                                         // setFromDate(), before the view is loaded
    OptionalDate m_toDate;                                           // likewise
    KTVDataClusterViewController::Pointer m_dataCluster;             // owns
    bool m_propertyDetailsShowing = false;                           // DetailsPanel
    std::optional<CPTPlotRange> m_plotRangeForY;                     // Axes; archived, never restored to the plot space
    InfoTableArrayPtr m_infoTableArray;                              // shares with the array controller; InfoTable
    QStringList m_deletionArray;                                     // display names; PropertySet
    std::optional<QVariantMap> m_tableColumns;                       // as read from the archive
    std::optional<std::map<QString, int>> m_showMapping;             // InfoTable; never read to decide visibility
    KTVRecordDictionaryPtr m_plotData;                               // shares; Series
    std::optional<Binders> m_binders;                                // Series; absent until the graph is built
    std::optional<std::map<QString, QColor>> m_colorNameDictionary;  // Series; emptied on every rebuild, never filled
    CPTXYGraphPtr m_graph;                                           // shares with the hosting view; Graph
    std::unique_ptr<KTVMessageViewController> m_messageViewController;  // owns; from viewDidLoad on
    bool m_observersAdded = false;                                      // Observation
    bool m_plotReady = false;                                           // Acquisition clears it; nothing sets it
    OptionalDate m_refreshedFrom, m_refreshedTo;                        // Acquisition
    std::unique_ptr<plotix::ReadSpans> m_readSpans;                     // owns; told, never asked
    plotix::ReadingOptions m_reading;                                   // Reading
    std::unique_ptr<TrendAccess> m_access;                              // owns; what the parts of the reading see
    std::unique_ptr<plotix::TrendReader> m_reader;                      // owns; goes before the view and the graph
    QPointer<LineMenu> m_lineMenu;                                      // weak; Reading. Absent unless chosen
    bool m_lacksAnswer = false;                                         // Acquisition; the last fetch answered nothing
    bool m_firstFitUnderWay = false;                                    // Axes; the y axis is not re-ticked meanwhile
    bool m_rangeBeingShown = false;                                     // Following; no modifier key counts meanwhile
    QPointer<QObject> m_completionTarget;                               // weak
    QByteArray m_completionSelector;                                    // a method name taking one QByteArray
    QString m_graphTitle;                                               // drawn into off-screen images only
    QString m_imageSize;                                                // points, as size text
    std::shared_ptr<QObject> m_webView;                                 // unused: the host owns the printing view

    QPointer<KTVGraphHostingView> m_hostView;
    QPointer<QWidget> m_dataClusterHostView;
    QPointer<PropertyDragDropView> m_dragDropView;
    QPointer<PropertyDetailsTableView> m_infoTable;
    std::unique_ptr<InfoTableArrayController> m_infoTableArrayController;  // made with the view, null before
    QPointer<QWidget> m_propertyDetailsView;
    QPointer<QAbstractButton> m_propertyDetailsDisclosureButton;
    QPointer<QLabel> m_propertyDetailsTextField;
    QPointer<QAbstractButton> m_sharingButton;
    QPointer<RangeNotice> m_rangeNotice;            // a child of the hosting view; Reading
    TrendViewArrangement* m_arrangement = nullptr;  // a child, made with the view; DetailsPanel
};
