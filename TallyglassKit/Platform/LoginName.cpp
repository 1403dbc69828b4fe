#include "TallyglassKit/Platform/LoginName.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

namespace tallyglass {

std::string loginName() {
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16384> text{};
    if (getpwuid_r(getuid(), &entry, text.data(), text.size(), &found) != 0 || !found)
        return {};
    return found->pw_name;
}

} // namespace tallyglass
