#include "TallyglassKit/Platform/Clock.h"

namespace tallyglass {

Date systemTime() {
    return std::chrono::system_clock::now();
}

} // namespace tallyglass
