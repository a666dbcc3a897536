#pragma once

#include "plugins/PlotixPlugIn/KTVDataClusterViewController.h"
#include "plugins/PlotixPlugIn/SelectableProperty.h"
#include "plugins/PlotixPlugIn/host/KTVPlugIn.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>

/// The toolbar plug-in: a button in the site window's toolbar, the setup sheet it opens, and the answers to the host's
/// web server.
///
///   construction, archive, description                          KTVPlotixToolbarPlugIn.cpp
///   the setup sheet and the trend views it makes                KTVPlotixToolbarPlugIn_Sheet.cpp
///   advertisement and pictures for the web server               KTVPlotixToolbarPlugIn_WebService.cpp
///
/// Its view is the sheet's content. Held by shared_ptr: the host *shares* it. Outlets are weak and null while no view
/// is loaded; every operation is safe then. Main thread only, except `webServiceAdvertisementForBaseURL` and
/// `webServiceResponseForRequest`.
class KTVPlotixToolbarPlugIn : public KTVPlugIn {
    Q_OBJECT
public:
    using Ptr = std::shared_ptr<KTVPlotixToolbarPlugIn>;

    // Null when the base declines.
    static Ptr initWithAgent(KTVAgentPtr agent, KTVSiteWindowController* siteWindowController);
    static Ptr initWithCoder(KTVDecoder& decoder);
    ~KTVPlotixToolbarPlugIn() override;

    /// After the base's keys "dataClusterViewController", "lastUsedTitle", "openInSeparateWindow". Stored: never
    /// change.
    void encodeWithCoder(KTVEncoder& encoder) const override;

    // Description. It has no XML, JSON or group, like the base.
    QString name() const override;
    QString textDescription() const override;
    std::optional<QString> htmlDescription() const override;
    QIcon icon() const override;
    QString bundleIdentifier() const override;
    int bundleVersion() const override;
    std::optional<QString> bundleShortVersion() const override;

    // Toolbar. Every call makes a new item, whose object name is the bundle's identifier.
    QAction* toolbarItem() override;
    Q_INVOKABLE void toolbarItemAction(QObject* sender);

    // Sheet.
    void showPlotixSetupWindow();
    void updateSelectableProperties();  ///< without a loaded view no row can be added
    Q_INVOKABLE void doneClicked(QObject* sender);
    Q_INVOKABLE void cancelClicked(QObject* sender);

    // Web service. Links and titles are not escaped; see the hooks of the base for threads and lifetimes.
    std::optional<QString> webServiceAdvertisementForBaseURL(const QString& baseURL) override;
    QString webServiceAdvertisementOnMainThreadForBaseURL(const QString& baseURL);
    GCDWebServerDataResponsePtr webServiceResponseForRequest(const KTVWebServiceRequest& request) override;

    /// Hands the search through separate windows to the main queue. The override above never waits for it.
    using SubmitLookup = std::function<void(std::function<void()> lookup)>;
    GCDWebServerDataResponsePtr webServiceResponseForRequest(const KTVWebServiceRequest& request,
                                                             const SubmitLookup& submitLookup);

    // Fields.
    bool openInSeparateWindow() const { return m_openInSeparateWindow; }
    void setOpenInSeparateWindow(bool open);
    const QString& lastUsedTitle() const { return m_lastUsedTitle; }
    const QString& desiredTitle() const { return m_desiredTitle; }
    void setDesiredTitle(const QString& title);
    const KTVDataClusterViewController::Pointer& dataClusterViewController() const { return m_dataCluster; }
    QDialog* configurationWindow() const { return m_configurationWindow; }  ///< of the current or last showing
    /// In the order they were added; null before the first showing.
    const std::shared_ptr<SelectableProperties>& selectableProperties() const { return m_selectableProperties; }

    // Outlets.
    QWidget* dataClusterHostView() const { return m_dataClusterHostView; }
    SelectablePropertiesArrayController* selectablePropertiesArrayController() const { return m_arrayController.get(); }
    QTableView* propertyTable() const { return m_propertyTable; }
    QLineEdit* titleField() const { return m_titleField; }
    QCheckBox* openInSeparateWindowCheckBox() const { return m_openInSeparateWindowCheckBox; }

protected:
    QWidget* loadView() override;
    void viewDidLoad() override;

private:
    enum ReturnCode { Cancelled = QDialog::Rejected, Done = QDialog::Accepted };

    KTVPlotixToolbarPlugIn();
    void initCommon();
    void decodeFields(const KTVDecoder& decoder);

    void endSheet(ReturnCode code);
    void sheetIsEnding(int code);
    void sheetDidEnd(int code);
    void addSelectableProperty(const KTVPropertyPtr& property);
    KTVPropertyList tickedProperties() const;
    void addTrendView(const KTVPropertyList& properties);

    bool m_openInSeparateWindow = false;                           // Sheet; archived
    QString m_lastUsedTitle;                                       // construction and decoding only; archived
    KTVDataClusterViewController::Pointer m_dataCluster;           // owns; without a delegate
    QPointer<QDialog> m_configurationWindow;                       // owns, unless the site window goes first
    QString m_desiredTitle;                                        // Sheet
    std::shared_ptr<SelectableProperties> m_selectableProperties;  // shares with the array controller; Sheet

    QPointer<QWidget> m_dataClusterHostView;
    std::unique_ptr<SelectablePropertiesArrayController> m_arrayController;  // made with the view, null before
    QPointer<QTableView> m_propertyTable;
    int m_usualTableHeight = 0;  ///< points, on a screen with space for it
    QPointer<QLineEdit> m_titleField;
    QPointer<QCheckBox> m_openInSeparateWindowCheckBox;
};
