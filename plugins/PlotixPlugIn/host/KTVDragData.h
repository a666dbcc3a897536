#pragma once

#include "plugins/PlotixPlugIn/host/KTVHostExport.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

class QMimeData;

/// What a drag of properties carries: the keys of properties of one agent, under a type named after the agent.
///
/// Reading is safe for any bytes: they become texts or nothing. Stored: never change.
///
///     data  := magic count string*      nothing may follow
///     magic := "KTVKEYS1"               eight bytes
///     count := uint32, little endian    number of strings
///     string := length bytes            length: uint32, little endian; bytes: UTF-8
///
/// The keys "a" and "co2" are 4B 54 56 4B 45 59 53 31, 02 00 00 00, 01 00 00 00 61, 03 00 00 00 63 6F 32.
/// Free functions over values; any thread.
KTVHOST_EXPORT QByteArray dragDataFromPropertyNames(const QStringList& propertyNames);

/// Nothing when the bytes are not exactly of that form, or a text is not UTF-8.
KTVHOST_EXPORT std::optional<QStringList> propertyNamesFromDragData(const QByteArray& data);

/// Drag data ready for a drag: the keys under `dragType`, the agent's unique identifier.
KTVHOST_EXPORT std::unique_ptr<QMimeData> mimeDataForPropertyNames(const QString& dragType,
                                                                   const QStringList& propertyNames);
