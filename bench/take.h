#pragma once

#include <filesystem>

namespace tarnwick::bench {

// The recording that the benchmarks work on: the file named by TARNWICK_BENCH_TAKE, else an hour of
// speech-like 24-bit mono sound that is made in the temporary folder and deleted at the end.
const std::filesystem::path& take();

// A 24-bit stereo WAV of six hours, mostly holes, in the temporary folder; deleted at the end.
const std::filesystem::path& sixHours();

// A place in the same folder for a file that a benchmark writes; deleted at the end.
const std::filesystem::path& outputFile();

}  // namespace tarnwick::bench
