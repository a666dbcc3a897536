#pragma once

#include <QtCore/QtGlobal>

#include <cstddef>

/// A row of the table of chunks. A value; any thread.
namespace plotix {

struct Chunk {
    qint64 id = 0;
    double t0 = 0, t1 = 0;  ///< times of its first and last record
    std::size_t n = 0;      ///< records
};

}  // namespace plotix
