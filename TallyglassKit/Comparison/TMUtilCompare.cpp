#include "TallyglassKit/Comparison/TMUtilCompare.h"

#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Internal/CompareTreeReader.h"
#include "TallyglassKit/Comparison/Internal/CompareXMLReader.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"

#include <array>
#include <utility>

namespace tallyglass {

namespace {

TMUtilCompare::Result decodeAnyForm(std::string_view data, std::span<const std::string> roots,
                                    const SharedText& comparisonID) {
    try {
        return readCompareXML(data, {roots, comparisonID});
    } catch (const PropertyListError&) {
        // Another form, or malformed XML, for which PropertyList reports the error.
        return readCompareTree(PropertyList::parse(data).root(), data.size(), {roots, comparisonID});
    }
}

void append(TMUtilRunner::Arguments& arguments, TMUtilRunner::Arguments more) {
    arguments.insert(arguments.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
}

} // namespace

TMUtilCompare::Result TMUtilCompare::decode(std::string_view data, std::span<const std::string> roots,
                                            const SharedText& comparisonID) {
    try {
        return decodeAnyForm(data, roots, comparisonID);
    } catch (const Error& failure) {
        throw TMUtilError::malformedOutput(failure.errorDescription(), {"compare", "-X"});
    }
}

TMUtilCompare::Result TMUtilCompare::compare(const TMUtilRunner& runner, const std::string& from,
                                             const std::string& to, const CompareOptions& options,
                                             const SharedText& comparisonID,
                                             const TMUtilRunner::OnBytes& onBytes, std::stop_token stop) {
    return compare(runner, from, to, std::array{from, to}, options, comparisonID, onBytes, std::move(stop));
}

TMUtilCompare::Result TMUtilCompare::compare(const TMUtilRunner& runner, const std::string& fromOperand,
                                             const std::string& toOperand,
                                             std::span<const std::string> stripRoots,
                                             const CompareOptions& options, const SharedText& comparisonID,
                                             const TMUtilRunner::OnBytes& onBytes, std::stop_token stop) {
    TMUtilRunner::Arguments arguments{"compare"};
    append(arguments, options.arguments());
    append(arguments, {fromOperand, toOperand});
    return decode(runner.run(arguments, onBytes, std::move(stop)).stdout, stripRoots, comparisonID);
}

TMUtilCompare::Result TMUtilCompare::compare(const TMUtilRunner& runner, const std::string& from,
                                             const std::string& to, std::optional<std::int64_t> depth,
                                             const SharedText& comparisonID, std::stop_token stop) {
    return compare(runner, from, to, CompareOptions::fast(depth), comparisonID, {}, std::move(stop));
}

TMUtilCompare::Result TMUtilCompare::compareWithSource(const TMUtilRunner& runner,
                                                       const std::string& backupPath,
                                                       std::optional<std::int64_t> depth,
                                                       const SharedText& comparisonID, std::stop_token stop) {
    TMUtilRunner::Arguments arguments{"compare", "-X"};
    if (depth)
        append(arguments, {"-D", std::to_string(*depth)});
    arguments.push_back(backupPath);
    return decode(runner.run(arguments, std::move(stop)).stdout, std::array{backupPath}, comparisonID);
}

} // namespace tallyglass
