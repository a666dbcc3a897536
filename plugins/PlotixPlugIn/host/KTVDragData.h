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
/// A keyed archive whose root, the member "root", is the list of keys. Reading is safe for any bytes: they become texts
/// or nothing. Earlier programs wrote a framing of their own, which is read as well. Stored: never change.
///
///     old data := "KTVKEYS1" count string*      nothing may follow
///     count    := uint32, little endian         number of strings
///     string   := length bytes                  length: uint32, little endian; bytes: UTF-8
///
/// `docs/formats.md` has both, byte by byte. Free functions over values; any thread.
KTVHOST_EXPORT QByteArray dragDataFromPropertyNames(const QStringList& propertyNames);

/// Nothing when the bytes are of neither form, an element is no text, or a text is not UTF-8.
KTVHOST_EXPORT std::optional<QStringList> propertyNamesFromDragData(const QByteArray& data);

/// Drag data ready for a drag: the keys under `dragType`, the agent's unique identifier.
KTVHOST_EXPORT std::unique_ptr<QMimeData> mimeDataForPropertyNames(const QString& dragType,
                                                                   const QStringList& propertyNames);
