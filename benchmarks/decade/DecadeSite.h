#pragma once

#include <QtCore/QString>

#include <cstddef>

/// A site of ten properties with a record a second: ten years of it, 3.08 billion values, or a part. Two weather
/// stations' columns side by side.
///
/// Main thread only.
namespace plotix_bench {

inline constexpr std::size_t kDecadeRecords = 308'000'000;
inline constexpr std::size_t kDecadeProperties = 10;

/// Makes the file, in place of what was there, and says on standard error how far it is.
void makeDecade(const QString& path, std::size_t records);

}  // namespace plotix_bench
