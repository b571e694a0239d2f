#pragma once

#include <filesystem>

namespace tarnwick::bench {

// The recording that the benchmarks use: the file named by TARNWICK_BENCH_TAKE, else an hour of
// speech-like 24-bit mono sound, created in the temporary folder and deleted at the end.
const std::filesystem::path& take();

// A 24-bit stereo WAV of six hours, a sparse file in the temporary folder; deleted at the end.
const std::filesystem::path& sixHours();

// A path in the same folder for a file that a benchmark writes; deleted at the end.
const std::filesystem::path& outputFile();

}  // namespace tarnwick::bench
