#include "TallyglassKit/Comparison/Internal/CompareTreeReader.h"

#include "TallyglassKit/Platform/Error.h"

#include <string>

namespace tallyglass {

namespace {

// The records from a list without shared values take about twice its size.
constexpr std::size_t growthLimit = 32;

class CompareTreeReader {
public:
    CompareTreeReader(std::size_t dataSize, const CompareResultBuilder::Context& context)
        : m_remaining(dataSize * growthLimit), m_builder(context) {}

    TMUtilCompare::Result read(PropertyListValue root) {
        if (!root.isDictionary())
            throw Error("The root is no dictionary.");
        auto& result = m_builder.result();
        if (const auto totals = root.find("Totals")) {
            result.addedSize = integer(*totals, "AddedSize");
            result.changedSize = integer(*totals, "ChangedSize");
            result.removedSize = integer(*totals, "RemovedSize");
        }
        if (const auto changes = root.find("Changes"))
            if (const auto elements = changes->array())
                for (const PropertyListValue change : *elements)
                    readChange(change);
        return m_builder.finish();
    }

private:
    static std::optional<std::int64_t> integer(PropertyListValue dictionary, std::string_view key) {
        const auto value = dictionary.find(key);
        return value ? value->integer() : std::nullopt;
    }

    void readChange(PropertyListValue value) {
        CompareChange change;
        change.added = item(value.find("AddedItem"));
        change.removed = item(value.find("RemovedItem"));
        change.newer = item(value.find("NewerItem"));
        change.older = item(value.find("OlderItem"));
        change.differences = differences(value.find("Differences"));
        m_builder.add(change);
    }

    CompareItem item(std::optional<PropertyListValue> value) {
        CompareItem item;
        if (!value || !value->isDictionary())
            return item;
        item.isPresent = true;
        if (const auto path = value->find("Path"))
            item.path = path->text();
        item.size = integer(*value, "Size");
        spend(sizeof(ChangeRecord) + item.path.value_or("").size());
        return item;
    }

    std::optional<std::string_view> differences(std::optional<PropertyListValue> value) {
        const auto elements = value ? value->array() : std::nullopt;
        if (!elements)
            return std::nullopt;
        m_differences.clear();
        for (const PropertyListValue& element : *elements) {
            const auto text = element.text();
            if (!text)
                return std::nullopt;
            spend(text->size() + 1);
            if (&element != &elements->front())
                m_differences += ',';
            m_differences += *text;
        }
        return m_differences;
    }

    void spend(std::size_t bytes) {
        if (bytes > m_remaining)
            throw Error("The list of changes repeats itself without end.");
        m_remaining -= bytes;
    }

    std::size_t m_remaining; // bytes that the records may still take
    CompareResultBuilder m_builder;
    std::string m_differences;
};

} // namespace

TMUtilCompare::Result readCompareTree(PropertyListValue root, std::size_t dataSize,
                                      const CompareResultBuilder::Context& context) {
    return CompareTreeReader(dataSize, context).read(root);
}

} // namespace tallyglass
