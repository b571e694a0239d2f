#pragma once

#include <pugixml.hpp>
#include <string_view>

#include "documents/zip_package.h"

namespace tarnwick::documents {

// Most elements inside one another: far more than any writer needs, far less than the stack holds.
inline constexpr int kDeepestMarkup = 250;

// Throws PackageError past that depth.
inline void checkDepth(int depth) {
    if (depth > kDeepestMarkup) throw PackageError(PackageError::kDamaged);
}

// Chooses the branch for readers that know only the base format: there a drawing has no text that
// would become part of the cell, and a symbol is a plain character.
inline pugi::xml_node chosenBranch(const pugi::xml_node& alternatives) {
    const pugi::xml_node fallback = childNamed(alternatives, "Fallback");
    return fallback.first_child() ? fallback : childNamed(alternatives, "Choice");
}

}  // namespace tarnwick::documents
