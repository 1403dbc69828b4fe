#include "TallyglassKit/Platform/Error.h"

namespace tallyglass {

namespace {

std::string withoutZeroBytes(std::string text) {
    for (auto zero = text.find('\0'); zero != std::string::npos; zero = text.find('\0', zero))
        text.replace(zero, 1, "\uFFFD");
    return text;
}

} // namespace

Error::Error(const std::string& description) : std::runtime_error(withoutZeroBytes(description)) {}

} // namespace tallyglass
