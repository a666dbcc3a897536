#include "hostapp/site/WindowMemory.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace plotix {

namespace {

// Names of settings in the document. Stored: never change.
const QString kOrder = QStringLiteral("trendOrder");
const QString kSelected = QStringLiteral("selectedTrend");
const QString kGeometry = QStringLiteral("windowGeometry");
const QString kColumns = QStringLiteral("windowColumns");
const QString kLists = QStringLiteral("windowLists");
const QString kSeparate = QStringLiteral("separateWindows");
const QString kFollowed = QStringLiteral("followedTrends");
const QString kFollowedSpans = QStringLiteral("followedSpans");
const QString kIdentifier = QStringLiteral("identifier");
const QString kFrame = QStringLiteral("geometry");

QByteArray textOf(const QStringList& identifiers)
{
    return identifiers.join(QLatin1Char('\n')).toUtf8();
}

QStringList identifiersIn(const QByteArray& text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// "IDENTIFIER NAME", a line each.
QByteArray textOf(const std::map<QString, QString>& names)
{
    QStringList lines;
    for (const auto& [identifier, name] : names)
        lines << identifier + QLatin1Char(' ') + name;
    return textOf(lines);
}

std::map<QString, QString> namesIn(const QByteArray& text)
{
    std::map<QString, QString> names;
    for (const QString& line : identifiersIn(text))
        names[line.section(QLatin1Char(' '), 0, 0)] = line.section(QLatin1Char(' '), 1);
    return names;
}

QByteArray textOf(const std::vector<SeparateTrend>& trends)
{
    QJsonArray array;
    for (const SeparateTrend& trend : trends)
        array.append(
            QJsonObject{{kIdentifier, trend.identifier}, {kFrame, QString::fromLatin1(trend.geometry.toBase64())}});
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::vector<SeparateTrend> separateTrendsIn(const QByteArray& text)
{
    std::vector<SeparateTrend> trends;
    for (const QJsonValue& value : QJsonDocument::fromJson(text).array()) {
        const QJsonObject object = value.toObject();
        const QString identifier = object.value(kIdentifier).toString();
        if (!identifier.isEmpty())
            trends.push_back({identifier, QByteArray::fromBase64(object.value(kFrame).toString().toLatin1())});
    }
    return trends;
}

}  // namespace

WindowState readWindowState(const SiteDocument& document)
{
    WindowState state;
    state.order = identifiersIn(document.setting(kOrder));
    state.selected = QString::fromUtf8(document.setting(kSelected));
    state.geometry = document.setting(kGeometry);
    state.columns = document.setting(kColumns);
    state.lists = document.setting(kLists);
    state.separate = separateTrendsIn(document.setting(kSeparate));
    state.followed = identifiersIn(document.setting(kFollowed));
    state.followSpans = namesIn(document.setting(kFollowedSpans));
    return state;
}

WindowMemory::WindowMemory(std::shared_ptr<SiteDocument> document)
    : m_document(std::move(document)), m_state(readWindowState(*m_document))
{
}

void WindowMemory::store(const WindowState& state)
{
    if (m_document->isReadOnly() || state == m_state)
        return;
    const auto put = [this](const QString& key, const auto& before, const auto& now, const QByteArray& bytes) {
        if (before != now)
            m_document->setSetting(key, bytes);
    };
    put(kOrder, m_state.order, state.order, textOf(state.order));
    put(kSelected, m_state.selected, state.selected, state.selected.toUtf8());
    put(kGeometry, m_state.geometry, state.geometry, state.geometry);
    put(kColumns, m_state.columns, state.columns, state.columns);
    put(kLists, m_state.lists, state.lists, state.lists);
    put(kSeparate, m_state.separate, state.separate, textOf(state.separate));
    put(kFollowed, m_state.followed, state.followed, textOf(state.followed));
    put(kFollowedSpans, m_state.followSpans, state.followSpans, textOf(state.followSpans));
    m_state = state;
}

}  // namespace plotix
