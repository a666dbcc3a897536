// The setup sheet: its rows, its showing, and the trend view that Done makes.
//
// Rules of this room:
//  1. Rows are recognised by the very property object and never removed, so ticks last from showing to showing, also
//     those of properties that are hidden or gone by now.
//  2. Every showing makes a new window around the one view. Its end is handled on the main queue, with the plug-in held
//     weakly, so that whatever it causes finds the window at rest.
//  3. The new view gets its dates and title before it is added: adding it loads it, and loading it fetches.
//  4. It is added to the plug-in's own site window; the item is looked up, and opened, in the agent's.
//  5. Nothing is checked: no tick, an empty title or reversed dates make a view that says so itself.

#include "plugins/PlotixPlugIn/KTVPlotixToolbarPlugIn.h"

#include "base/MainQueue.h"
#include "plugins/PlotixPlugIn/KTVPlotixPlugIn.h"
#include "plugins/PlotixPlugIn/PropertySelectionModel.h"
#include "plugins/PlotixPlugIn/host/KTVBundle.h"
#include "plugins/PlotixPlugIn/host/KTVMessageViewController.h"
#include "ui_KTVPlotixToolbarPlugIn.h"

#include <QtGui/QScreen>

#include <algorithm>

namespace {

/// Labels and buttons in the user's language; their texts in the interface description are the keys.
void localizeTexts(QWidget& root)
{
    const KTVBundle& bundle = *KTVBundle::mainBundle();
    for (QLabel* label : root.findChildren<QLabel*>())
        label->setText(bundle.localizedString(label->text()));
    for (QAbstractButton* button : root.findChildren<QAbstractButton*>())
        button->setText(bundle.localizedString(button->text()));
}

/// A window around `content`, not resizable. A sheet on `window`; without one it stands alone and blocks nothing.
QDialog* makeSheet(QWidget* content, QWidget* window, const QString& title)
{
    auto* sheet = new QDialog(window);
    sheet->setWindowTitle(title);
    sheet->setWindowFlag(Qt::MSWindowsFixedSizeDialogHint);
    auto* column = new QVBoxLayout(sheet);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(content);
    content->show();  // leaving the last window had hidden it
    return sheet;
}

/// The sheet cannot be resized, so on a low or much magnified screen its table gives way: its buttons must be seen.
void fitToScreen(QWidget& sheet, QWidget& table, int usualTableHeight)
{
    constexpr int kTitleBar = 40;           // points; what the desktop may draw around a sheet
    constexpr int kLowestTableHeight = 88;  // heading and three rows
    table.setFixedHeight(usualTableHeight);
    sheet.layout()->activate();
    const int excess = sheet.sizeHint().height() + kTitleBar - sheet.screen()->availableGeometry().height();
    if (excess > 0)
        table.setFixedHeight(std::max(kLowestTableHeight, usualTableHeight - excess));
}

}  // namespace

QWidget* KTVPlotixToolbarPlugIn::loadView()
{
    auto* root = new QWidget;
    Ui::KTVPlotixToolbarPlugIn ui;
    ui.setupUi(root);
    localizeTexts(*root);
    m_dataClusterHostView = ui.dataClusterHostView;
    m_propertyTable = ui.propertyTable;
    m_usualTableHeight = ui.propertyTable->minimumHeight();
    m_titleField = ui.titleField;
    m_openInSeparateWindowCheckBox = ui.openInSeparateWindowCheckBox;
    m_arrayController = std::make_unique<SelectablePropertiesArrayController>();
    m_arrayController->setContent(m_selectableProperties);
    auto* rows = new PropertySelectionModel(ui.propertyTable);
    rows->setArrayController(m_arrayController.get());
    ui.propertyTable->setModel(rows);

    m_titleField->setText(m_desiredTitle);
    connect(m_titleField, &QLineEdit::textChanged, this, [this](const QString& text) { m_desiredTitle = text; });
    m_openInSeparateWindowCheckBox->setChecked(m_openInSeparateWindow);
    connect(m_openInSeparateWindowCheckBox, &QCheckBox::toggled, this,
            [this](bool checked) { m_openInSeparateWindow = checked; });
    connect(ui.doneButton, &QPushButton::clicked, this, [this, button = ui.doneButton] { doneClicked(button); });
    connect(ui.cancelButton, &QPushButton::clicked, this, [this, button = ui.cancelButton] { cancelClicked(button); });
    return root;
}

void KTVPlotixToolbarPlugIn::viewDidLoad()
{
    m_dataCluster->refreshButton()->hide();
    m_dataClusterHostView->layout()->addWidget(m_dataCluster->view());
    m_dataCluster->view()->layout()->setContentsMargins(0, 6, 0, 6);  // flush with the table above
    // The date panel was added last; Tab must reach it between the table and the title, where it is seen.
    QWidget* previous = m_propertyTable;
    for (QWidget* next : std::initializer_list<QWidget*>{m_dataCluster->fromDate(), m_dataCluster->toDate(),
                                                         m_dataCluster->quickDatePopupButton(), m_titleField}) {
        QWidget::setTabOrder(previous, next);
        previous = next;
    }
}

void KTVPlotixToolbarPlugIn::setOpenInSeparateWindow(bool open)
{
    m_openInSeparateWindow = open;
    if (m_openInSeparateWindowCheckBox)
        m_openInSeparateWindowCheckBox->setChecked(open);
}

void KTVPlotixToolbarPlugIn::setDesiredTitle(const QString& title)
{
    m_desiredTitle = title;
    if (m_titleField)
        m_titleField->setText(title);
}

void KTVPlotixToolbarPlugIn::updateSelectableProperties()
{
    if (!m_selectableProperties) {
        m_selectableProperties = std::make_shared<SelectableProperties>();
        if (m_arrayController)
            m_arrayController->setContent(m_selectableProperties);
    }
    const KTVPropertyCollection properties = agent()->properties();
    for (const KTVPropertyPtr& property : properties.objects())
        if (property->visible())
            addSelectableProperty(property);
}

void KTVPlotixToolbarPlugIn::addSelectableProperty(const KTVPropertyPtr& property)
{
    if (!m_arrayController)
        return;
    // The object counts, not its name: a property measured anew under an old name is another one.
    const SelectableProperties& rows = m_arrayController->arrangedObjects();
    const bool isListed = std::any_of(rows.begin(), rows.end(), [&property](const SelectablePropertyPtr& row) {
        return row->property() == property;
    });
    if (!isListed)
        m_arrayController->addObject(std::make_shared<SelectableProperty>(property));
}

void KTVPlotixToolbarPlugIn::showPlotixSetupWindow()
{
    QWidget* content = view();
    if (!content)  // a parent has deleted it
        return;
    QWidget* window = siteWindowController() ? siteWindowController()->window() : nullptr;
    const QPointer<QDialog> last = m_configurationWindow;
    m_configurationWindow =
        makeSheet(content, window,
                  KTVBundle::mainBundle()->localizedString(QStringLiteral(QT_TRANSLATE_NOOP("Plotix", "New Trend"))));
    delete last;  // after the view has moved; a sheet still open ends without an answer
    updateSelectableProperties();
    connect(m_configurationWindow, &QDialog::finished, this, &KTVPlotixToolbarPlugIn::sheetIsEnding);
    fitToScreen(*m_configurationWindow, *m_propertyTable, m_usualTableHeight);
    if (window)
        m_configurationWindow->open();
    else
        m_configurationWindow->show();
}

void KTVPlotixToolbarPlugIn::doneClicked(QObject* /*sender*/)
{
    endSheet(Done);
}

void KTVPlotixToolbarPlugIn::cancelClicked(QObject* /*sender*/)
{
    endSheet(Cancelled);
}

void KTVPlotixToolbarPlugIn::endSheet(ReturnCode code)
{
    if (m_configurationWindow && m_configurationWindow->isVisible())  // a closed sheet is not ended again
        m_configurationWindow->done(code);
}

void KTVPlotixToolbarPlugIn::sheetIsEnding(int code)
{
    removeFromSuperview(view());  // so that the settings survive the window's parent
    plotix::MainQueue::main().async([weak = weak_from_this(), code] {
        if (const auto plugIn = std::static_pointer_cast<KTVPlotixToolbarPlugIn>(weak.lock()))
            plugIn->sheetDidEnd(code);
    });
}

void KTVPlotixToolbarPlugIn::sheetDidEnd(int code)
{
    if (code == Done)
        addTrendView(tickedProperties());
}

KTVPropertyList KTVPlotixToolbarPlugIn::tickedProperties() const
{
    // The order of the rows, not the one the table may be sorted in.
    KTVPropertyList ticked;
    for (const SelectablePropertyPtr& row : *m_selectableProperties)
        if (row->selected())
            ticked.push_back(row->property());
    return ticked;
}

void KTVPlotixToolbarPlugIn::addTrendView(const KTVPropertyList& properties)
{
    const KTVPlotixPlugIn::Ptr trend = KTVPlotixPlugIn::initWithAgent(agent(), siteWindowController(), properties);
    if (!trend)
        return;
    trend->setFromDate(m_dataCluster->fromDateValue());
    trend->setToDate(m_dataCluster->toDateValue());
    trend->setTitle(m_desiredTitle);
    if (siteWindowController())
        siteWindowController()->addPlugIn(trend, true);
    KTVSiteWindowController* agentsController = agent()->siteWindowController();
    if (!m_openInSeparateWindow || !agentsController)
        return;
    if (const KTVSourceListItemPtr item = agentsController->findSourceListItemWithRepresentedObject(trend.get()))
        agentsController->openInSeparateWindow(item);
}
