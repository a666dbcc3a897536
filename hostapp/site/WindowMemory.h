#pragma once

#include "hostapp/document/SiteDocument.h"

#include <QtCore/QStringList>

#include <map>

/// How a site's windows were left, kept in the site document, so that it opens the same way on another machine.
///
/// Values and the reading and writing of them. Main thread only.
namespace plotix {

/// A trend in a window of its own.
struct SeparateTrend {
    QString identifier;  ///< the plug-in's
    QByteArray geometry;

    friend bool operator==(const SeparateTrend&, const SeparateTrend&) = default;
};

struct WindowState {
    QStringList order;    ///< identifiers of the trends, as listed
    QString selected;     ///< identifier; empty: none
    QByteArray geometry;  ///< of the site window; empty: never stored
    QByteArray columns;   ///< splitter between lists and trend
    QByteArray lists;     ///< splitter between the lists
    std::vector<SeparateTrend> separate;
    QStringList followed;                    ///< identifiers of the trends that are followed, as listed
    std::map<QString, QString> followSpans;  ///< by identifier: their span's name, where it is not the present length

    friend bool operator==(const WindowState&, const WindowState&) = default;
};

/// Damaged or missing parts come back empty.
WindowState readWindowState(const SiteDocument& document);

/// Writes what differs from what it wrote or read last. *Shares* the document.
class WindowMemory {
public:
    explicit WindowMemory(std::shared_ptr<SiteDocument> document);

    const WindowState& state() const { return m_state; }  ///< as stored
    void store(const WindowState& state);  ///< throws ReportableError; a read-only document stores nothing

private:
    std::shared_ptr<SiteDocument> m_document;
    WindowState m_state;
};

}  // namespace plotix
