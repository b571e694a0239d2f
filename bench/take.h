#pragma once

#include <filesystem>
#include <string>

namespace tarnwick::bench {

// The recording that the benchmarks work on: the file named by TARNWICK_BENCH_TAKE, else an hour of
// speech-like 24-bit mono sound that is made in the temporary folder and deleted at the end.
const std::filesystem::path& take();

// A 24-bit stereo WAV of six hours, mostly holes, in the temporary folder; deleted at the end.
const std::filesystem::path& sixHours();

// Seconds that a command takes on the take, the best of three runs; 0 when it is not installed.
// `options` stand between the input and the output to nothing.
double ffmpegSeconds(const std::string& options);

// Resident memory of this process, in megabytes, now.
double residentMegabytes();

}  // namespace tarnwick::bench
