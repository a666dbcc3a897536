#pragma once

#include <QtCore/QIODevice>

#include <memory>

/// Devices that read another one and change its form. Each *borrows* what it reads, is open for reading, and is read
/// once from front to back; one thread.
namespace plotix {

/// The contents of a gzip file, also of several written one behind the other. What is damaged ends the reading by
/// ImportFailure.
std::unique_ptr<QIODevice> unpackedBytes(QIODevice& packed);

/// How long they say they are; below 4 GiB only, and wrong for several. Leaves the device at its beginning.
qint64 unpackedSize(QIODevice& packed);

/// UTF-16 as UTF-8, without the mark in front.
std::unique_ptr<QIODevice> narrowBytes(QIODevice& wide, bool isBigEndian);

}  // namespace plotix
