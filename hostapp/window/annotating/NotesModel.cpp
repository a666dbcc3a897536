#include "hostapp/window/annotating/NotesModel.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <algorithm>
#include <cmath>

namespace plotix {

NotesModel::NotesModel(std::shared_ptr<SiteDocument> document, QObject* parent)
    : QAbstractTableModel(parent), m_document(std::move(document))
{
    connect(m_document.get(), &SiteDocument::annotationsChanged, this, &NotesModel::take);
    take();
}

void NotesModel::take()
{
    beginResetModel();
    m_notes = m_document->notes();
    endResetModel();
}

void NotesModel::sayBy(const QTimeZone& zone)
{
    beginResetModel();
    m_zone = zone;
    endResetModel();
}

QString NotesModel::momentText(double seconds) const
{
    const qint64 whole = std::llround(seconds);
    return QLocale().toString(m_zone.isValid() ? QDateTime::fromSecsSinceEpoch(whole, m_zone)
                                               : QDateTime::fromSecsSinceEpoch(whole),
                              QLocale::ShortFormat);
}

int NotesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_notes.size());
}

int NotesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString NotesModel::propertiesText(const SiteNote& note) const
{
    QStringList names;
    for (const auto& agent : m_document->agents())
        for (const auto& property : agent->siteProperties())
            if (std::find(note.properties.begin(), note.properties.end(), property->description().id) !=
                note.properties.end())
                names << (m_document->agents().size() > 1
                              ? QStringLiteral("%1: %2").arg(agent->name(), property->name())
                              : property->name());
    return note.properties.empty() ? tr("all")
           : names.isEmpty()       ? tr("deleted ones")
                                   : names.join(QStringLiteral(", "));
}

QVariant NotesModel::data(const QModelIndex& index, int role) const
{
    const SiteNote& note = noteAt(index.row());
    const bool isForPeople = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    if (!isForPeople && role != kSortRole)
        return {};
    switch (index.column()) {
    case Time: return isForPeople ? QVariant(momentText(note.from)) : QVariant(note.from);
    case End:
        if (isForPeople)
            return note.to > note.from ? momentText(note.to) : QString();
        return note.to;
    case Text: return role == Qt::DisplayRole ? note.text.simplified() : note.text;
    case Properties: return propertiesText(note);
    case Author: return note.author;
    case Modified: return isForPeople ? QVariant(momentText(note.modified)) : QVariant(note.modified);
    default: return {};
    }
}

QVariant NotesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString time = m_zone.isValid() ? tr("Time (%1)").arg(QString::fromLatin1(m_zone.id())) : tr("Time");
    const QStringList titles{time, tr("Until"), tr("Note"), tr("Properties"), tr("Author"), tr("Changed")};
    return titles.value(section);
}

}  // namespace plotix
