#pragma once

#include <filesystem>
#include <system_error>

// Copies and moves files so that a crash or a full disk leaves either the old or the new state.

namespace tarnwick::platform {

// What to do if the name of a complete copy is taken: replace the existing file, or fail with
// EEXIST.
enum class IfTaken { Replace, Fail };

// Copies the regular file `from` to `to`. After a return without an error, the copy and its name
// are on disk. The copy is written under a hidden name beside the target and removed on failure.
std::error_code copyDurably(const std::filesystem::path& from, const std::filesystem::path& to,
                            IfTaken ifTaken);

// Renames `from` to `to` and fails with EEXIST if `to` is taken. Between two file systems it
// copies durably and then removes the original.
std::error_code moveWithoutOverwriting(const std::filesystem::path& from,
                                       const std::filesystem::path& to);

}  // namespace tarnwick::platform
