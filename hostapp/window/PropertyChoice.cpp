#include "hostapp/window/PropertyChoice.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace plotix {

PropertyChoice::PropertyChoice(QWidget* parent)
    : QWidget(parent), m_search(new QLineEdit(this)), m_list(new QListWidget(this)), m_count(new QLabel(this))
{
    constexpr int kRowsSeen = 5;
    setFocusProxy(m_list);
    m_search->setPlaceholderText(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_search->setAccessibleName(tr("Search properties"));
    m_list->setAccessibleName(tr("Properties"));
    m_list->setUniformItemSizes(true);
    m_list->setMinimumHeight(kRowsSeen * (fontMetrics().height() + 4));
    m_list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_count->setForegroundRole(QPalette::PlaceholderText);
    auto* all = new QPushButton(tr("Tick A&ll"), this);
    auto* none = new QPushButton(tr("&Untick All"), this);
    for (QPushButton* button : {all, none})
        button->setAutoDefault(false);
    auto* below = new QHBoxLayout;
    below->addWidget(all);
    below->addWidget(none);
    below->addWidget(m_count, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_search);
    column->addWidget(m_list, 1);
    column->addLayout(below);
    connect(m_search, &QLineEdit::textChanged, this, &PropertyChoice::search);
    connect(m_list, &QListWidget::itemChanged, this, &PropertyChoice::tell);
    connect(all, &QPushButton::clicked, this, [this] { tickFound(true); });
    connect(none, &QPushButton::clicked, this, [this] { tickFound(false); });
}

void PropertyChoice::offer(const std::vector<Property>& properties)
{
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        for (const Property& property : properties) {
            auto* item = new QListWidgetItem(property.name, m_list);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
            item->setCheckState(property.isTicked ? Qt::Checked : Qt::Unchecked);
        }
        m_list->setCurrentRow(0);
    }
    search(m_search->text());
    tell();
}

std::vector<std::size_t> PropertyChoice::ticked() const
{
    std::vector<std::size_t> rows;
    for (int row = 0; row < m_list->count(); ++row)
        if (m_list->item(row)->checkState() == Qt::Checked)
            rows.push_back(static_cast<std::size_t>(row));
    return rows;
}

bool PropertyChoice::isSearching() const
{
    return m_search->hasFocus();
}

void PropertyChoice::leaveSearch()
{
    for (int row = 0; row < m_list->count(); ++row)
        if (!m_list->item(row)->isHidden()) {
            m_list->setCurrentRow(row);
            break;
        }
    m_list->setFocus();
}

void PropertyChoice::search(const QString& text)
{
    for (int row = 0; row < m_list->count(); ++row)
        m_list->item(row)->setHidden(!m_list->item(row)->text().contains(text.trimmed(), Qt::CaseInsensitive));
}

void PropertyChoice::tickFound(bool tick)
{
    {
        const QSignalBlocker quiet(m_list);
        for (int row = 0; row < m_list->count(); ++row)
            if (!m_list->item(row)->isHidden())
                m_list->item(row)->setCheckState(tick ? Qt::Checked : Qt::Unchecked);
    }
    m_list->viewport()->update();
    tell();
}

void PropertyChoice::tell()
{
    m_count->setText(tr("%1 of %2").arg(ticked().size()).arg(m_list->count()));
    emit tickedChanged();
}

}  // namespace plotix
