// Compare output of any bytes: it gives records or a TMUtilError, and what is XML gives the same through the
// reader that builds no tree as through the tree.

#include "TallyglassKit/Comparison/Internal/CompareTreeReader.h"
#include "TallyglassKit/Comparison/Internal/CompareXMLReader.h"
#include "TallyglassKit/Comparison/TMUtilCompare.h"
#include "TallyglassKit/Platform/PropertyLists/Internal/XMLPropertyListReader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

using namespace tallyglass;

namespace {

const std::array<std::string, 3> roots = {"/b", "/b/one", "/b/two"};

template <typename Read>
std::optional<TMUtilCompare::Result> resultOf(Read read) {
    try {
        return read();
    } catch (const Error&) {
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const SharedText comparisonID("id");
    const CompareResultBuilder::Context context{roots, comparisonID};

    const auto decoded = resultOf([&] { return TMUtilCompare::decode(bytes, roots, comparisonID); });
    const auto streamed = resultOf([&] { return readCompareXML(bytes, context); });
    const auto fromTree = resultOf([&] {
        PropertyListStorage storage;
        return readCompareTree(readXMLPropertyList(bytes, storage), size, context);
    });
    if (streamed != fromTree || (streamed && streamed != decoded))
        std::abort();
    for (const ChangeRecord& change : decoded ? decoded->changes : std::vector<ChangeRecord>())
        if (change.isDirectory != !change.size || !change.path.starts_with(change.parentPath()))
            std::abort();
    return 0;
}
