// Parsing property lists, relative to libplist. Each side parses bytes in memory and frees the result, which
// is measured, too.

#include "Benchmarks/Support/Row.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"

#include <fmt/format.h>
#include <malloc.h>
#include <plist/plist.h>

#include <cstdint>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

namespace tallyglass::bench {

namespace {

constexpr std::size_t listSize = 20'000'000;

using List = std::unique_ptr<void, decltype(&plist_free)>;

std::string uuid(std::mt19937& random) {
    return fmt::format("{:08X}-{:04X}-{:04X}-{:04X}-{:08X}{:04X}", random(), random() & 0xFFFF,
                       random() & 0xFFFF, random() & 0xFFFF, random(), random() & 0xFFFF);
}

plist_t dates(std::mt19937& random, int count) {
    const plist_t list = plist_new_array();
    std::int32_t seconds = 700'000'000;
    for (int i = 0; i < count; ++i) {
        seconds += static_cast<std::int32_t>(3000 + random() % 2000);
        plist_array_append_item(list,
                                plist_new_date(seconds, static_cast<std::int32_t>(random() % 1'000'000)));
    }
    return list;
}

/// A destination as the preference file has it, with several hundred backups.
plist_t destination(std::mt19937& random) {
    const plist_t result = plist_new_dict();
    const auto set = [&](const char* key, plist_t value) { plist_dict_set_item(result, key, value); };
    const auto text = [](const std::string& value) { return plist_new_string(value.c_str()); };
    set("DestinationID", text(uuid(random)));
    set("LastKnownVolumeName", text(fmt::format("Sauvegarde d’été & <{}>", random() % 1000)));
    set("NetworkURL", text(fmt::format("smb://user{}@nas.local./Backups?a=1&b=2", random() % 100)));
    set("LastKnownEncryptionState", text("NotEncrypted"));
    set("FilesystemTypeName", text("apfs"));
    set("BytesUsed", plist_new_uint(random() * std::uint64_t{400}));
    set("BytesAvailable", plist_new_uint(random() * std::uint64_t{300}));
    set("RESULT", plist_new_uint(random() % 2 ? 0 : 26));
    set("ConsistencyScanDate", dates(random, 1));
    const auto uuids = plist_new_array();
    plist_array_append_item(uuids, text(uuid(random)));
    set("DestinationUUIDs", uuids);
    std::string alias(600, '\0');
    for (char& byte : alias)
        byte = static_cast<char>(random());
    set("BackupAlias", plist_new_data(alias.data(), alias.size()));
    const auto count = static_cast<int>(100 + random() % 400);
    set("SnapshotDates", dates(random, count));
    set("AttemptDates", dates(random, count));
    const plist_t statistics = plist_new_array();
    for (int i = 0; i < count / 10; ++i) {
        const plist_t changed = plist_new_dict();
        plist_dict_set_item(changed, "count", plist_new_uint(random() % 10'000));
        plist_dict_set_item(changed, "logicalSize", plist_new_uint(random() * std::uint64_t{8}));
        plist_dict_set_item(changed, "ratio", plist_new_real(static_cast<double>(random()) / 7e9));
        const plist_t volume = plist_new_dict();
        plist_dict_set_item(volume, "path", text(fmt::format("/Users/anna/Bücher/{}", random() % 5000)));
        plist_dict_set_item(volume, "isComplete", plist_new_bool(random() % 8 != 0));
        plist_dict_set_item(volume, "changed", changed);
        plist_array_append_item(statistics, volume);
    }
    set("Statistics", statistics);
    return result;
}

std::string write(const List& list, bool binary) {
    char* bytes = nullptr;
    std::uint32_t size = 0;
    (binary ? plist_to_bin : plist_to_xml)(list.get(), &bytes, &size);
    if (!bytes)
        throw std::runtime_error("libplist couldn't write the list");
    std::string result(bytes, size);
    (binary ? plist_to_bin_free : plist_to_xml_free)(bytes);
    return result;
}

/// A list with as many destinations as fill the measured size.
std::string preferences(bool binary) {
    std::mt19937 random(1);
    const auto listOf = [&](std::size_t count) {
        List list(plist_new_dict(), plist_free);
        const plist_t destinations = plist_new_array();
        for (std::size_t i = 0; i < count; ++i)
            plist_array_append_item(destinations, destination(random));
        plist_dict_set_item(list.get(), "AutoBackup", plist_new_bool(1));
        plist_dict_set_item(list.get(), "Destinations", destinations);
        return write(list, binary);
    };
    const std::size_t sampleCount = 32;
    return listOf(sampleCount * listSize / listOf(sampleCount).size());
}

Row row(std::string name, std::string form, bool binary) {
    const auto bytes = std::make_shared<std::string>();
    return {
        .name = std::move(name),
        .work = "read a 20 MB preference-like list in " + form + " into our tree and free it",
        .reference = "libplist's plist_from_memory and plist_free",
        .unit = "s",
        .ratio = Ratio::speed,
        .must = 3,
        .aim = 6,
        .prepare = [=]() -> std::shared_ptr<void> {
            *bytes = preferences(binary);
            return bytes;
        },
        .measure =
            [=] {
                malloc_trim(0); // else one side would clean up the other's heap in its measured time
                return seconds([&] {
                    const auto list = PropertyList::parse(*bytes);
                    if (!list.root().find("Destinations"))
                        throw std::runtime_error("our reader gave another list");
                });
            },
        .measureReference =
            [=] {
                malloc_trim(0);
                return seconds([&] {
                    plist_t list = nullptr;
                    plist_from_memory(bytes->data(), static_cast<std::uint32_t>(bytes->size()), &list);
                    if (!plist_dict_get_item(list, "Destinations"))
                        throw std::runtime_error("libplist gave another list");
                    plist_free(list);
                });
            },
    };
}

const bool added = add(row("plist-binary", "the binary form", true)) && add(row("plist-xml", "XML", false));

} // namespace

} // namespace tallyglass::bench
