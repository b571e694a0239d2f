#pragma once

namespace tarnwick::runtime {

// Typed by service to get at what the operator does not need to see.
inline constexpr char16_t kServiceCode[] = u"3172";

}  // namespace tarnwick::runtime
