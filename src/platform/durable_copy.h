#pragma once

#include <filesystem>
#include <system_error>

// Copying and moving files so that a crash or a full disk leaves the old state or the new one.

namespace tarnwick::platform {

// What becomes of a copy whose name is taken when it is complete: it replaces what stands there, or
// it fails with EEXIST.
enum class IfTaken { Replace, Fail };

// Copies the regular file `from` to `to`; when it returns without an error, the copy and its name
// are on the disk. The copy grows under a hidden name beside the target and is removed when it
// fails.
std::error_code copyDurably(const std::filesystem::path& from, const std::filesystem::path& to,
                            IfTaken ifTaken);

// Renames `from` to `to` and fails with EEXIST where `to` is taken; between two file systems it
// copies durably and then removes the original.
std::error_code moveWithoutOverwriting(const std::filesystem::path& from,
                                       const std::filesystem::path& to);

}  // namespace tarnwick::platform
