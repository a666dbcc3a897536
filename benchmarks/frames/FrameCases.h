#pragma once

/// The cases of the frame benchmarks, by file. Main thread only, before the benchmarks run.
namespace plotix_bench {

void registerFrames();
void registerPaged();
void registerPictures();
void registerPointing();

}  // namespace plotix_bench
