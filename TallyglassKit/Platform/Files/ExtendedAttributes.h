// Extended attributes of file system items, under the names of the system whose backups these are, such as
// "com.apple.metadata:com_apple_backup_excludeItem". Symbolic links aren't followed; on file systems where
// links can't have attributes, they have none.
//
// Linux keeps them in its namespace "user.", which the names here omit. Any thread.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

/// Whether the item has the attribute, without reading its value. False on any failure.
[[nodiscard]] bool hasExtendedAttribute(const std::string& path, std::string_view name);

/// The value of the attribute; absent if there is none or it can't be read.
[[nodiscard]] std::optional<std::string> extendedAttribute(const std::string& path, std::string_view name);

/// Sets the attribute, replacing any previous value. Throws FileError.
void setExtendedAttribute(const std::string& path, std::string_view name, std::string_view value);

/// Removes the attribute, if the item has it. Throws FileError.
void removeExtendedAttribute(const std::string& path, std::string_view name);

} // namespace tallyglass
