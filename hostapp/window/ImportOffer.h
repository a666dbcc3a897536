#pragma once

#include <QtCore/QString>

#include <optional>

class QWidget;

/// Which site a file of measurements goes into, when the program is started with the file alone. Main thread only.
namespace plotix {

struct ImportOffer {
    QString site;        ///< path
    bool isNew = false;  ///< to be made; else it exists
};

/// The site proposed for the measurements of the file: beside it, under its name.
QString siteProposedFor(const QString& file);

/// Asks: a new site, one that exists, or nothing of the kind.
std::optional<ImportOffer> askWhereToImport(const QString& file, QWidget* parent = nullptr);

}  // namespace plotix
