#include "TallyglassKit/Access/TMUtilResult.h"

#include "TallyglassKit/Platform/Text/UTF8.h"

namespace tallyglass {

std::string TMUtilResult::stdoutText() const {
    return decodeUTF8(stdout);
}

std::string TMUtilResult::stderrText() const {
    return decodeUTF8(stderr);
}

} // namespace tallyglass
