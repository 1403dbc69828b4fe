#include "TallyglassKit/Comparison/Internal/CompareXMLReader.h"

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/PropertyLists/XMLTokenizer.h"

#include <array>

// Recursive descent through the known structure, with a function for each dictionary that handles its keys as
// they come. Values of unknown keys or of the wrong type are skipped. Of equal keys the last wins, so each
// one first resets its field.

namespace tallyglass {

namespace {

using Token = XMLTokenizer::Token;

class CompareXMLReader {
public:
    CompareXMLReader(std::string_view data, const CompareResultBuilder::Context& context)
        : m_xml(data), m_builder(context) {
        // A change takes some 550 bytes. Reserved memory that isn't used is never touched.
        constexpr std::size_t shortChange = 400;
        m_builder.result().changes.reserve(data.size() / shortChange);
    }

    TMUtilCompare::Result read() {
        const bool isDictionary = forEachKey(m_xml.next(), [this](std::string_view key) {
            if (key == "Changes")
                readChanges();
            else if (key == "Totals")
                readTotals();
            else
                m_xml.skipValue();
        });
        m_xml.next(); // checks that the document ends properly
        if (!isDictionary)
            throw Error("The root is no dictionary.");
        return m_builder.finish();
    }

private:
    /// If `first` begins a dictionary, calls `visit` for each key to read its value.
    template <typename Visit>
    bool forEachKey(Token first, Visit visit) {
        if (first != Token::dictionary) {
            m_xml.skipRest(first);
            return false;
        }
        while (m_xml.next() == Token::key)
            visit(m_xml.text());
        return true;
    }

    std::optional<std::int64_t> readInteger() {
        if (const Token token = m_xml.next(); token != Token::integer) {
            m_xml.skipRest(token);
            return std::nullopt;
        }
        return m_xml.integer().asSigned();
    }

    void readTotals() {
        auto& [changes, added, changed, removed, unrecognized] = m_builder.result();
        added = changed = removed = std::nullopt;
        forEachKey(m_xml.next(), [&](std::string_view key) {
            if (key == "AddedSize")
                added = readInteger();
            else if (key == "ChangedSize")
                changed = readInteger();
            else if (key == "RemovedSize")
                removed = readInteger();
            else
                m_xml.skipValue();
        });
    }

    void readChanges() {
        m_builder.removeChanges();
        const Token first = m_xml.next();
        if (first != Token::array)
            return m_xml.skipRest(first);
        for (Token token = m_xml.next(); token != Token::endArray; token = m_xml.next())
            readChange(token);
    }

    void readChange(Token first) {
        CompareChange change;
        forEachKey(first, [&](std::string_view key) {
            if (key == "Differences")
                readDifferences(change.differences);
            else if (key == "NewerItem")
                readItem(change.newer, m_paths[0]);
            else if (key == "OlderItem")
                readItem(change.older, m_paths[1]);
            else if (key == "AddedItem")
                readItem(change.added, m_paths[2]);
            else if (key == "RemovedItem")
                readItem(change.removed, m_paths[3]);
            else
                m_xml.skipValue();
        });
        m_builder.add(change);
    }

    /// Reads an item. Its path is stored in `kept` if it had to be decoded.
    void readItem(CompareItem& item, std::string& kept) {
        item = {};
        item.isPresent = forEachKey(m_xml.next(), [&](std::string_view key) {
            if (key == "Path")
                readPath(item.path, kept);
            else if (key == "Size")
                item.size = readInteger();
            else
                m_xml.skipValue();
        });
    }

    void readPath(std::optional<std::string_view>& path, std::string& kept) {
        path.reset();
        if (const Token token = m_xml.next(); token != Token::string)
            m_xml.skipRest(token);
        else if (m_xml.isTextLasting())
            path = m_xml.text();
        else
            path = kept = m_xml.text();
    }

    void readDifferences(std::optional<std::string_view>& differences) {
        differences.reset();
        const Token first = m_xml.next();
        if (first != Token::array)
            return m_xml.skipRest(first);
        m_differences.clear();
        bool areStrings = true;
        bool isFirst = true;
        for (Token token = m_xml.next(); token != Token::endArray; token = m_xml.next()) {
            if (token != Token::string) {
                areStrings = false;
                m_xml.skipRest(token);
                continue;
            }
            if (!isFirst)
                m_differences += ',';
            isFirst = false;
            m_differences += m_xml.text();
        }
        if (areStrings)
            differences = m_differences;
    }

    XMLTokenizer m_xml;
    CompareResultBuilder m_builder;
    std::array<std::string, 4> m_paths; // decoded paths of the current change
    std::string m_differences;
};

} // namespace

TMUtilCompare::Result readCompareXML(std::string_view data, const CompareResultBuilder::Context& context) {
    return CompareXMLReader(data, context).read();
}

} // namespace tallyglass
