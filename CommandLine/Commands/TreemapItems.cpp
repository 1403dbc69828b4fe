#include "CommandLine/Commands/TreemapItems.h"

#include "TallyglassKit/Platform/Error.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <string>

namespace tallyglass::commandline {

std::vector<TreemapItem> parseTreemapItems(std::string_view json) {
    try {
        const auto document = nlohmann::json::parse(json);
        if (!document.is_array())
            throw Error("The items aren't a JSON array.");
        std::vector<TreemapItem> items;
        for (const auto& item : document) {
            const auto& value = item.at("value");
            items.push_back(
                {item.at("id").get<std::string>(), item.at("label").get<std::string>(),
                 value.is_null() ? std::numeric_limits<double>::quiet_NaN() : value.get<double>()});
        }
        return items;
    } catch (const nlohmann::json::exception& failure) {
        throw Error(fmt::format("The items can't be read: {}", failure.what()));
    }
}

} // namespace tallyglass::commandline
