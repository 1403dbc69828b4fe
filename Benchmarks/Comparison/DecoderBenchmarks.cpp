// Decoding compare output to records, relative to only parsing it with general XML and property-list
// libraries.

#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Comparison/TMUtilCompare.h"

#include <expat.h>
#include <fmt/format.h>
#include <malloc.h>
#include <plist/plist.h>

#include <array>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tallyglass::bench {

namespace {

constexpr int changeCount = 200'000;

const std::array<std::string, 2> roots = {"/Volumes/.timemachine/11112222-5A5D-4859-A4A7-4B3B7885CFEB/"
                                          "2026-02-26-010832.backup/2026-02-26-010832.backup",
                                          "/Volumes/.timemachine/11112222-5A5D-4859-A4A7-4B3B7885CFEB/"
                                          "2026-02-27-010848.backup/2026-02-27-010848.backup"};

void appendItem(std::string& xml, std::string_view key, const std::string& root, const std::string& path,
                int size) {
    auto out = std::back_inserter(xml);
    fmt::format_to(
        out, "\t\t\t<key>{}</key>\n\t\t\t<dict>\n\t\t\t\t<key>Path</key>\n\t\t\t\t<string>{}{}</string>\n",
        key, root, path);
    if (size > 0)
        fmt::format_to(out, "\t\t\t\t<key>Size</key>\n\t\t\t\t<integer>{}</integer>\n", size);
    xml += "\t\t\t</dict>\n";
}

void appendDifferences(std::string& xml, int number) {
    xml += "\t\t\t<key>Differences</key>\n\t\t\t<array>\n\t\t\t\t<string>mtime</string>\n";
    if (number % 2 == 0)
        xml += "\t\t\t\t<string>size</string>\n";
    xml += "\t\t\t</array>\n";
}

/// tmutil's output for a day's changes: of six, four modified, one added and one removed; every seventh is a
/// folder, and some names aren't ASCII or contain an ampersand.
std::string compareOutput() {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                      "<plist version=\"1.0\">\n<dict>\n\t<key>Changes</key>\n\t<array>\n";
    for (int i = 0; i < changeCount; ++i) {
        const std::string_view name = i % 50 == 0   ? "Entwürfe &amp; Notizen"
                                      : i % 10 == 0 ? "Résumé"
                                                    : "Document";
        const std::string path = fmt::format("/Macintosh HD - Data/Users/anna/Projects/"
                                             "{:03}/{} {:06}.pages",
                                             i % 400, name, i);
        const int size = i % 7 == 0 ? 0 : 1000 + i * 13 % 9'000'000;
        xml += "\t\t<dict>\n";
        if (i % 6 == 4)
            appendItem(xml, "AddedItem", roots[1], path, size);
        else if (i % 6 == 5)
            appendItem(xml, "RemovedItem", roots[0], path, size);
        else {
            appendDifferences(xml, i);
            appendItem(xml, "NewerItem", roots[1], path, size);
            appendItem(xml, "OlderItem", roots[0], path, size);
        }
        xml += "\t\t</dict>\n";
    }
    xml += "\t</array>\n\t<key>Totals</key>\n\t<dict>\n\t\t<key>AddedSize</key>\n\t\t<integer>12345678</"
           "integer>\n"
           "\t</dict>\n</dict>\n</plist>\n";
    return xml;
}

// Created once for a row, which keeps it while it is measured.
std::shared_ptr<std::string> sharedOutput() {
    static std::weak_ptr<std::string> kept;
    auto output = kept.lock();
    if (!output)
        kept = output = std::make_shared<std::string>(compareOutput());
    return output;
}

double decode(const std::string& output) {
    return seconds([&] {
        const auto result = TMUtilCompare::decode(output, roots, "bench");
        if (result.changes.size() != changeCount)
            throw std::runtime_error("the decoder lost changes");
        keep(result);
    });
}

double parseWithExpat(const std::string& output) {
    return seconds([&] {
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                                  &XML_ParserFree);
        XML_SetElementHandler(
            parser.get(), [](void*, const XML_Char*, const XML_Char**) {}, [](void*, const XML_Char*) {});
        XML_SetCharacterDataHandler(parser.get(), [](void*, const XML_Char*, int) {});
        if (XML_Parse(parser.get(), output.data(), static_cast<int>(output.size()), 1) != XML_STATUS_OK)
            throw std::runtime_error("expat refuses the output");
    });
}

double parseWithLibplist(const std::string& output) {
    return seconds([&] {
        plist_t root = nullptr;
        plist_from_xml(output.data(), static_cast<std::uint32_t>(output.size()), &root);
        if (!root)
            throw std::runtime_error("libplist refuses the output");
        keep(root);
        plist_free(root);
    });
}

Row row(std::string name, std::string reference, double must, double aim,
        double (*measureReference)(const std::string&)) {
    return {
        .name = std::move(name),
        .work = fmt::format("decode {} changes from XML into records", changeCount),
        .reference = std::move(reference),
        .unit = "s",
        .must = must,
        .aim = aim,
        .prepare = [] { return sharedOutput(); },
        .measure =
            [] {
                malloc_trim(0); // else one side would clean up the other's heap in its measured time
                return decode(*sharedOutput());
            },
        .measureReference =
            [measureReference] {
                malloc_trim(0);
                return measureReference(*sharedOutput());
            },
    };
}

const bool isAdded =
    add(row("decode-changes", "a pass of expat with empty handlers", 2, 3, parseWithExpat)) &&
    add(row("decode-changes-libplist", "libplist building its tree", 8, 15, parseWithLibplist));

} // namespace

} // namespace tallyglass::bench
