#pragma once

#include "base/KTVArrayController.h"

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QColor>

#include <memory>
#include <vector>

/// One row of the statistics table, and the list of rows that the plug-in, the table and the archive use.
///
/// Rows have identity: they are *shared* by pointer and compared by pointer, so "remove this row" removes one.
/// Statistics are computed in double precision and kept in single precision. Main thread only.
struct InfoTableRow {
    bool show = true;           ///< whether the property's plot is visible
    QColor color = {};          ///< of the property's plot line
    QString tableName = {};     ///< the property's display name: what rows are matched by
    QString propertyName = {};  ///< the property's key: plot identifier, key of the plot data
    QString unit = {};          ///< symbol of the first valid value, "-" without one
    float minimum = 0;
    float maximum = 0;
    float average = 0;  ///< rounded for display by the host
    qint32 points = 0;  ///< valid values

    friend bool operator==(const InfoTableRow&, const InfoTableRow&) = default;
};

using InfoTableRowPtr = std::shared_ptr<InfoTableRow>;
using InfoTableArray = std::vector<InfoTableRowPtr>;
using InfoTableArrayPtr = std::shared_ptr<InfoTableArray>;
using InfoTableArrayController = KTVArrayController<InfoTableRowPtr>;

/// A row as its nine keys "show", "color" ("#aarrggbb", empty for none), "tableName", "propertyName", "unit",
/// "minimum", "maximum", "average", "points". Stored: never change.
QVariantMap dictionaryFromInfoTableRow(const InfoTableRow& row);

/// Reads the nine keys; a missing or unreadable one leaves the field's default. A missing "show" is true.
InfoTableRow infoTableRowFromDictionary(const QVariantMap& dictionary);

/// Lists of rows for the archive. Elements that are no dictionaries are skipped.
QVariantList variantListFromInfoTableArray(const InfoTableArray& rows);
InfoTableArrayPtr infoTableArrayFromVariantList(const QVariantList& list);
