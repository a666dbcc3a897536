#pragma once

#include <QtCore/QString>

#include <functional>

/// What a zoom into long records waits for: lines of millions of elements unpacked from the file into the points of a
/// series. Main thread only.
namespace plotix_bench {

/// `site`: answers the file when a case runs.
void registerFilling(std::function<QString()> site);

}  // namespace plotix_bench
