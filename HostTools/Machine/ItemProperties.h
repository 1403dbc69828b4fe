// Compares the properties of two items of the same kind in two open folders.

#pragma once

#include "HostTools/Machine/TreeComparison.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

/// An item and its status: its name in an open folder, or its path with AT_FDCWD. Borrows all three.
struct ItemReference {
    int folder;
    const char* name;
    const struct stat* status;
};

/// The names of the requested properties in which the items differ, in the order of their letters. Properties
/// that can't be read don't differ; `failure` is then the error number.
[[nodiscard]] std::vector<std::string_view> differingProperties(const ComparedProperties& properties,
                                                                const ItemReference& older,
                                                                const ItemReference& newer, int& failure);

} // namespace tallyglass
