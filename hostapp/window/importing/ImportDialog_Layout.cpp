// What the import dialog is made of: file and agent above, at the left how the file is read, at the right its columns
// and its first rows.

#include "hostapp/window/importing/ColumnChoices.h"
#include "hostapp/window/importing/FirstRows.h"
#include "hostapp/window/importing/ImportDialog.h"
#include "hostapp/window/importing/ReadingFields.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

namespace {

constexpr QSize kUsualSize(1040, 700);  // points; less on a small screen
constexpr int kSideWidth = 350;

QTableView* makeTable(QAbstractItemModel* model, const QString& name, QWidget* parent)
{
    auto* table = new QTableView(parent);
    table->setModel(model);
    table->setAccessibleName(name);
    table->setTabKeyNavigation(false);  // the key leads on to the next field
    table->setWordWrap(false);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 8);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setMinimumHeight(5 * table->fontMetrics().height());
    return table;
}

/// A table below its title.
QWidget* titled(QLabel* title, QTableView* table)
{
    auto* part = new QWidget;
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(title);
    column->addWidget(table, 1);
    title->setBuddy(table);
    return part;
}

}  // namespace

void ImportDialog::build()
{
    auto* parts = new QSplitter(Qt::Horizontal, this);
    parts->addWidget(buildSide());
    parts->addWidget(buildTables());
    parts->setStretchFactor(1, 1);
    parts->setChildrenCollapsible(false);
    parts->setSizes({kSideWidth, kUsualSize.width() - kSideWidth});
    auto* column = new QVBoxLayout(this);
    column->addWidget(buildTop());
    column->addWidget(buildProblem());
    column->addWidget(parts, 1);
    column->addWidget(m_all);
    buildButtons();
    column->addWidget(m_buttons);
    setTabOrder(m_rowView, m_all);
    setTabOrder(m_all, m_import);
    m_all->setToolTip(tr("Each goes into an agent of its own name, unless you have named one above."));
    setMoreToCome(0);
    resize(kUsualSize);
}

QWidget* ImportDialog::buildTop()
{
    auto* top = new QWidget(this);
    auto* choose = new QPushButton(tr("&Choose…"), top);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_file);
    fileRow->addWidget(choose);
    auto* form = new QFormLayout(top);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("&File:"), fileRow);
    static_cast<QLabel*>(form->labelForField(fileRow))->setBuddy(m_file);  // a row of two widgets gets no buddy itself
    form->addRow(tr("&Agent:"), m_agent);
    m_file->setAccessibleName(tr("File"));
    m_agent->setObjectName(QStringLiteral("agent"));
    m_agent->setEditable(true);
    m_agent->setCurrentText({});
    m_agent->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_agent->setToolTip(tr("The source of these measurements; a new name makes a new one."));
    setTabOrder(m_file, choose);
    setTabOrder(choose, m_agent);
    connect(choose, &QPushButton::clicked, this, &ImportDialog::chooseFile);
    return top;
}

QWidget* ImportDialog::buildProblem()
{
    m_problemRow = new QWidget(this);
    auto* icon = new QLabel(m_problemRow);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    m_problem = new QLabel(m_problemRow);
    m_problem->setObjectName(QStringLiteral("problem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(m_problemRow);
    row->setContentsMargins(0, 2, 0, 2);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(m_problem, 1);
    return m_problemRow;
}

QWidget* ImportDialog::buildSide()
{
    auto* inside = new QWidget;
    auto* column = new QVBoxLayout(inside);
    column->setContentsMargins(0, 0, 6, 0);
    column->addWidget(m_fields);
    m_notes = new QLabel(inside);
    m_notes->setObjectName(QStringLiteral("notes"));
    m_notes->setTextFormat(Qt::PlainText);
    m_notes->setWordWrap(true);
    m_notes->setForegroundRole(QPalette::PlaceholderText);
    column->addWidget(m_notes);
    column->addStretch(1);
    m_side = new QScrollArea(this);
    m_side->setAccessibleName(tr("How the file is read"));
    m_side->setFrameShape(QFrame::NoFrame);
    m_side->setFocusPolicy(Qt::NoFocus);  // its fields have it
    m_side->setWidgetResizable(true);
    m_side->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_side->setWidget(inside);
    m_side->setMinimumWidth(inside->minimumSizeHint().width() + m_side->verticalScrollBar()->sizeHint().width());
    return m_side;
}

QWidget* ImportDialog::buildTables()
{
    m_columnView = makeTable(m_columns, tr("Columns"), this);
    m_columnView->setObjectName(QStringLiteral("columns"));
    m_columnView->verticalHeader()->hide();
    m_columnView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_columnView->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                  QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    m_columnView->horizontalHeader()->setStretchLastSection(true);
    m_columnView->setColumnWidth(ColumnChoices::Header, 150);
    m_columnView->setColumnWidth(ColumnChoices::Name, 115);
    m_columnView->setColumnWidth(ColumnChoices::Unit, 50);
    m_rowView = makeTable(m_rows, tr("First rows"), this);
    m_rowView->setObjectName(QStringLiteral("firstRows"));
    m_rowView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_howMany = new QLabel(this);
    m_howMany->setObjectName(QStringLiteral("howMany"));
    auto* tables = new QSplitter(Qt::Vertical, this);
    tables->addWidget(
        titled(new QLabel(tr("Co&lumns: tick those to take; names and units can be changed"), this), m_columnView));
    tables->addWidget(titled(m_howMany, m_rowView));
    tables->setChildrenCollapsible(false);
    return tables;
}

void ImportDialog::buildButtons()
{
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_import = m_buttons->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    m_skip = m_buttons->addButton(tr("&Skip This File"), QDialogButtonBox::ActionRole);
    connect(m_skip, &QPushButton::clicked, this, [this] { done(kSkipped); });
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

}  // namespace plotix
