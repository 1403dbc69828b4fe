#include "TallyglassKit/Platform/ErrorNumber.h"

#include <cstring>

namespace tallyglass {

std::string errorText(int number) {
    const char* words = strerrordesc_np(number);
    return words ? words : "Unknown error " + std::to_string(number);
}

} // namespace tallyglass
