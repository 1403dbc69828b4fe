#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <sys/xattr.h>

namespace tallyglass {

namespace {

std::string fullName(std::string_view name) {
    return std::string("user.").append(name);
}

} // namespace

bool hasExtendedAttribute(const std::string& path, std::string_view name) {
    return lgetxattr(path.c_str(), fullName(name).c_str(), nullptr, 0) >= 0;
}

std::optional<std::string> extendedAttribute(const std::string& path, std::string_view name) {
    const std::string full = fullName(name);
    while (true) {
        const auto size = lgetxattr(path.c_str(), full.c_str(), nullptr, 0);
        if (size < 0)
            return std::nullopt;
        std::string value(static_cast<std::size_t>(size), '\0');
        const auto read = lgetxattr(path.c_str(), full.c_str(), value.data(), value.size());
        if (read >= 0 && read <= size) { // a size of 0 queries the size again, which may have grown
            value.resize(static_cast<std::size_t>(read));
            return value;
        }
        if (read < 0 && errno != ERANGE)
            return std::nullopt;
    }
}

void setExtendedAttribute(const std::string& path, std::string_view name, std::string_view value) {
    if (lsetxattr(path.c_str(), fullName(name).c_str(), value.data(), value.size(), 0) != 0)
        throw FileError(errno, path);
}

void removeExtendedAttribute(const std::string& path, std::string_view name) {
    if (lremovexattr(path.c_str(), fullName(name).c_str()) != 0 && errno != ENODATA)
        throw FileError(errno, path);
}

} // namespace tallyglass
