// Compares the properties of two items of the same kind in two open folders.

#pragma once

#include "HostTools/Machine/TreeComparison.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

/// An item by its name in an open folder, or by its path with AT_FDCWD for the folder, and its status.
/// Borrows all three.
struct ItemReference {
    int folder;
    const char* name;
    const struct stat* status;
};

/// The names of the properties in which the items differ, of those asked for, in the order of their letters.
/// An item that can't be read differs in nothing that needs reading; `failure` then has the error number.
[[nodiscard]] std::vector<std::string_view> differingProperties(const ComparedProperties& properties,
                                                                const ItemReference& older,
                                                                const ItemReference& newer, int& failure);

} // namespace tallyglass
