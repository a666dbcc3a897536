#include "hostapp/window/annotating/NotesWindow.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace plotix {

namespace {

constexpr QSize kUsualSize(900, 400);  // points
constexpr int kRowRoom = 8;            // beside a line of text

/// Every word that is looked for stands in some column of a row.
class FoundNotes : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;
    void look(const QString& text)
    {
        m_words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        QString all;
        for (int column = 0; column < sourceModel()->columnCount(parent); ++column)
            all += sourceModel()->index(row, column, parent).data().toString() + QLatin1Char('\n');
        return std::all_of(m_words.begin(), m_words.end(),
                           [&all](const QString& word) { return all.contains(word, Qt::CaseInsensitive); });
    }

private:
    QStringList m_words;
};

}  // namespace

NotesWindow::NotesWindow(std::shared_ptr<SiteDocument> document, QWidget* parent)
    : QDialog(parent), m_document(std::move(document)), m_notes(new NotesModel(m_document, this))
{
    setWindowTitle(tr("Notes"));
    setObjectName(QStringLiteral("notes"));
    resize(kUsualSize);
    auto* found = new FoundNotes(this);
    m_found = found;
    m_found->setSourceModel(m_notes);
    m_found->setSortRole(NotesModel::kSortRole);
    m_found->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_search = new QLineEdit(this);
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search in notes"));
    m_search->setClearButtonEnabled(true);
    connect(m_search, &QLineEdit::textChanged, this, [this, found](const QString& text) {
        found->look(text);
        update();
    });
    makeTable();
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_search);
    column->addWidget(m_table);
    makeButtons();
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_goTo, m_open, m_add, m_remove})
        buttons->addWidget(button);
    buttons->addStretch();
    column->addLayout(buttons);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &NotesWindow::update);
    connect(m_found, &QAbstractItemModel::modelReset, this, &NotesWindow::update);
    update();
}

void NotesWindow::makeTable()
{
    m_table = new QTableView(this);
    m_table->setModel(m_found);
    m_table->setAccessibleName(tr("Notes"));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(NotesModel::Time, Qt::AscendingOrder);
    m_table->setTabKeyNavigation(false);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + kRowRoom);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(NotesModel::Text, QHeaderView::Stretch);
    m_table->installEventFilter(this);
    connect(m_table, &QAbstractItemView::clicked, this, &NotesWindow::goToCurrent);
    connect(m_table, &QAbstractItemView::doubleClicked, this, &NotesWindow::openCurrent);
}

void NotesWindow::makeButtons()
{
    const auto make = [this](const QString& text) {
        auto* button = new QPushButton(text, this);
        button->setAutoDefault(false);
        return button;
    };
    m_goTo = make(tr("&Go There"));
    m_open = make(tr("&Edit…"));
    m_add = make(tr("&New Note…"));
    m_remove = make(tr("&Delete"));
    connect(m_goTo, &QPushButton::clicked, this, &NotesWindow::goToCurrent);
    connect(m_open, &QPushButton::clicked, this, &NotesWindow::openCurrent);
    connect(m_add, &QPushButton::clicked, this, &NotesWindow::addWanted);
    connect(m_remove, &QPushButton::clicked, this, [this] { emit removeWanted(selected()); });
}

bool NotesWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: goToCurrent(); return true;
    case Qt::Key_F2: openCurrent(); return true;
    case Qt::Key_Delete:
        if (m_remove->isEnabled())
            emit removeWanted(selected());
        return true;
    default: return QDialog::eventFilter(watched, event);
    }
}

std::vector<qint64> NotesWindow::selected() const
{
    std::vector<qint64> ids;
    for (const QModelIndex& row : m_table->selectionModel()->selectedRows())
        ids.push_back(m_notes->noteAt(m_found->mapToSource(row).row()).id);
    return ids;
}

std::optional<SiteNote> NotesWindow::current() const
{
    const QModelIndex index = m_table->currentIndex();
    return index.isValid() ? std::optional(m_notes->noteAt(m_found->mapToSource(index).row())) : std::nullopt;
}

void NotesWindow::goToCurrent()
{
    if (const std::optional<SiteNote> note = current())
        emit goToWanted(note->from, note->to);
}

void NotesWindow::openCurrent()
{
    if (const std::optional<SiteNote> note = current(); note && m_open->isEnabled())
        emit openWanted(note->id);
}

void NotesWindow::update()
{
    const bool mayWrite = !m_document->isReadOnly();
    const bool isAny = !selected().empty();
    m_goTo->setEnabled(isAny);
    m_open->setEnabled(isAny && mayWrite);
    m_add->setEnabled(mayWrite);
    m_remove->setEnabled(isAny && mayWrite);
}

}  // namespace plotix
