// Named bytes that the file system keeps beside an item, under the names of the system whose backups these
// are, such as "com.apple.metadata:com_apple_backup_excludeItem". A symbolic link is taken as itself; where
// links can't have attributes, they have none.
//
// Linux keeps them in its namespace "user.", which isn't part of the names here. Any thread.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

/// Whether the item has the attribute, its value being left unread. False on any failure.
[[nodiscard]] bool hasExtendedAttribute(const std::string& path, std::string_view name);

/// The value of the attribute; absent if there is none or it can't be read.
[[nodiscard]] std::optional<std::string> extendedAttribute(const std::string& path, std::string_view name);

/// Gives the item the attribute, in place of an older value. Throws FileError.
void setExtendedAttribute(const std::string& path, std::string_view name, std::string_view value);

/// Takes the attribute away, if the item has it. Throws FileError.
void removeExtendedAttribute(const std::string& path, std::string_view name);

} // namespace tallyglass
