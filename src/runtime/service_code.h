#pragma once

namespace tarnwick::runtime {

// Support staff type this code to reach controls that are hidden from the operator.
inline constexpr char16_t kServiceCode[] = u"3172";

}  // namespace tarnwick::runtime
