#pragma once

/// The cases of the archive benchmarks, by file. Main thread only, before the benchmarks run.
namespace plotix_bench {

void registerArchive();
void registerCommits();
void registerRows();          ///< the same with one database row a record
void registerPlainColumns();  ///< the same with nothing but copying
void registerFilling();       ///< long columns unpacked into the points of lines

}  // namespace plotix_bench
