#include "TallyglassKit/Platform/ErrorText.h"

#include <cstring>

namespace tallyglass {

std::string errorText(int number) {
    const char* text = strerrordesc_np(number);
    return text ? text : "Unknown error " + std::to_string(number);
}

} // namespace tallyglass
