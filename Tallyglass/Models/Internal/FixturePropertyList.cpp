#include "Tallyglass/Models/Internal/FixturePropertyList.h"

#include <fmt/chrono.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cmath>
#include <ctime>

namespace tallyglass::fixture {

namespace {

std::string element(std::string_view name, std::string_view content) {
    return fmt::format("<{}>{}</{}>\n", name, content, name);
}

} // namespace

std::string text(std::string_view value) {
    std::string escaped;
    for (const char character : value) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        default:
            escaped += character;
        }
    }
    return element("string", escaped);
}

std::string integer(std::int64_t value) {
    return element("integer", std::to_string(value));
}

std::string boolean(bool value) {
    return value ? "<true/>\n" : "<false/>\n";
}

std::string date(Date value) {
    const auto seconds = static_cast<std::time_t>(std::floor(secondsSince1970(value)));
    return element("date", fmt::format("{:%FT%TZ}", fmt::gmtime(seconds)));
}

std::string array(std::span<const std::string> elements) {
    return element("array", fmt::format("{}", fmt::join(elements, "")));
}

std::string dictionary(const std::vector<std::pair<std::string_view, std::string>>& entries) {
    std::string content;
    for (const auto& [key, value] : entries) {
        if (!value.empty())
            content += element("key", key) + value;
    }
    return element("dict", content);
}

std::string propertyList(std::string_view root) {
    return fmt::format("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n{}</plist>\n",
                       root);
}

} // namespace tallyglass::fixture
