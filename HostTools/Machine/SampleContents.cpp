#include "HostTools/Machine/SampleContents.h"

#include "HostTools/Machine/Exclusions.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace tallyglass {

namespace fs = std::filesystem;

/// A folder for files of one kind.
struct SampleContents::Place {
    std::string folder;
    int share; ///< of all files, relative to the other folders
    double smallest;
    double largest;                 ///< bytes; sizes are log-uniform between the two
    std::vector<std::string> names; ///< with {} for a number
};

namespace {

constexpr double kilo = 1000;
constexpr double mega = 1000 * kilo;

// The accents of "Résumé" and "Überblick" are composed, those of "Café" and "Señora" decomposed: both forms
// occur on real disks.
const std::vector<std::string> letters{"Résumé {}.pdf",           "Cafe\u0301 receipts {}.txt",
                                       "Überblick {}.md",         "Letter to Sen\u0303ora Ruiz {}.txt",
                                       "Meeting notes {}.md",     "Budget {}.csv",
                                       "Contract (signed) {}.pdf"};
const std::vector<std::string> photos{"IMG_{}.jpg", "DSC_{}.jpg", "Panorama {}.jpg", "日の出 {}.jpg"};
const std::vector<std::string> sources{"planner_{}.cpp", "planner_{}.h", "test_{}.cpp", "notes {}.md",
                                       "schema_{}.sql"};
const std::vector<std::string> settings{"com.example.app{}.plist", "window-state-{}.json", "index_{}.db"};
const std::vector<std::string> songs{"{} Prélude.m4a", "{} Nocturne.m4a", "{} Étude.m4a"};

} // namespace

const std::vector<SampleContents::Place>& SampleContents::places() {
    static const std::vector<Place> result = [] {
        std::vector<Place> made{
            {"Desktop", 3, 1 * kilo, 200 * kilo, {"Screenshot {}.png", "To do {}.txt"}},
            {"Downloads", 5, 2 * kilo, 300 * kilo, {"Manual {}.pdf", "installer-{}.dmg", "archive {}.zip"}},
            {"Library/Caches/com.example.browser", 4, 1 * kilo, 20 * kilo, {"{}.cache"}},
            {"Library/Preferences", 8, 300, 4 * kilo, settings},
            {"Library/Mail/INBOX.mbox", 12, 600, 20 * kilo, {"{}.emlx"}},
            {"Library/Mail/Archive.mbox", 12, 600, 20 * kilo, {"{}.emlx"}},
            {"Music/Debussy — Piano", 1, 100 * kilo, 400 * kilo, songs},
            {"Projects/garden-planner/build", 3, 1 * kilo, 60 * kilo, {"planner_{}.o"}},
        };
        for (const char* topic : {"Invoices 2025", "Invoices 2026", "Recettes d’été", "Letters", "Taxes",
                                  "Thesis", "Insurance", "House"})
            made.push_back({fmt::format("Documents/{}", topic), 4, 500, 40 * kilo, letters});
        for (const char* album :
             {"2025/Lisbon", "2025/Garden", "2026/Zürich", "2026/Birthday", "2026/Café corner"})
            made.push_back({fmt::format("Pictures/{}", album), 3, 15 * kilo, 140 * kilo, photos});
        for (const char* project : {"garden-planner", "weather station"})
            for (const char* part : {"src", "src/core", "src/ui", "tests", "docs"})
                made.push_back({fmt::format("Projects/{}/{}", project, part), 3, 300, 12 * kilo, sources});
        for (int section = 1; section <= 40; ++section)
            made.push_back({fmt::format("Library/Application Support/Notebook/Section {:02}", section),
                            1,
                            400,
                            12 * kilo,
                            {"page {}.json", "sketch {}.svg"}});
        return made;
    }();
    return result;
}

std::vector<std::string> SampleContents::skippedFolders() {
    return {"Library/Caches"};
}

std::string SampleContents::markedFolder() {
    return "Projects/garden-planner/build";
}

void setModificationDate(const fs::path& item, Date date) {
    const double seconds = std::floor(secondsSince1970(date));
    const double fraction = secondsSince1970(date) - seconds;
    const timespec time{.tv_sec = static_cast<time_t>(seconds),
                        .tv_nsec = static_cast<long>(fraction * 1e6) * 1000};
    const timespec times[2] = {time, time};
    if (utimensat(AT_FDCWD, item.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0)
        throw FileError(errno, item.string());
}

void SampleContents::makeFolder(const fs::path& folder, Date date) const {
    if (fs::exists(folder))
        return;
    makeFolder(folder.parent_path(), date);
    fs::create_directory(folder);
    setModificationDate(folder, date);
    setModificationDate(folder.parent_path(), date);
}

void SampleContents::write(const std::string& file, const std::string& contents, Date date) const {
    const fs::path path = m_home / file;
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    if (!stream)
        throw FileError(errno, path.string());
    stream.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    stream.close();
    if (!stream)
        throw FileError(EIO, path.string());
    setModificationDate(path, date);
}

std::string SampleContents::newName(const Place& place) {
    return place.folder + "/" + fmt::format(fmt::runtime(m_random.choice(place.names)), m_nextNumber++);
}

void SampleContents::addFile(const Place& place, Date date) {
    const std::string file = newName(place);
    const fs::path folder = m_home / place.folder;
    makeFolder(folder, date);
    const double size = std::exp(m_random.between(std::log(place.smallest), std::log(place.largest)));
    write(file, m_random.bytes(static_cast<std::size_t>(size)), date);
    setModificationDate(folder, date);
    m_files.push_back(file);
}

void SampleContents::create(int files, Date first) {
    const Date oldest = first - std::chrono::hours(24 * 365);
    makeFolder(m_home, oldest);
    int shares = 0;
    for (const Place& place : places())
        shares += place.share;
    std::vector<const Place*> chosen;
    for (int index = 0; index < files; ++index) {
        auto share = static_cast<int>(m_random.below(static_cast<std::size_t>(shares)));
        const auto place = std::ranges::find_if(places(), [&](const Place& candidate) {
            share -= candidate.share;
            return share < 0;
        });
        chosen.push_back(&*place);
    }
    // In the order of their dates, so that each folder gets the date of its last change.
    for (int index = 0; index < files; ++index)
        addFile(*chosen[static_cast<std::size_t>(index)],
                oldest + (first - oldest) * (static_cast<double>(index) / files));
    if (files >= 1000) {
        const Place film{"Movies", 0, 3 * mega, 5 * mega, {"Holiday {}.mov"}};
        for (int index = 0; index < 3; ++index)
            addFile(film, first - std::chrono::hours(24 * (index + 1)));
    }
    makeFolder(m_home / markedFolder(), first - std::chrono::hours(2));
    fs::create_symlink("Documents/Letters", m_home / "Letters");
    setModificationDate(m_home / "Letters", first - std::chrono::hours(1));
    setModificationDate(m_home, first - std::chrono::hours(1));
    try {
        ExclusionMarker::put(m_home / markedFolder());
    } catch (const FileError& failure) {
        if (failure.code() != ENOTSUP) // a file system without attributes has no markers
            throw;
    }
}

void SampleContents::evolve(Date from, Date to) {
    const double hours = (to - from).count() / 3600;
    const double scale = std::max(0.05, static_cast<double>(m_files.size()) / 3000);
    const auto events = static_cast<std::size_t>(std::ceil(scale * (5 + std::min(hours, 72.0) * 1.1)));
    for (std::size_t index = 0; index < events; ++index) {
        const Date date =
            from + (to - from) * (static_cast<double>(index + 1) / static_cast<double>(events + 1));
        const std::size_t kind = m_random.below(100);
        if (kind < 40 || m_files.size() < 10)
            addFile(m_random.choice(places()), date);
        else if (kind < 72)
            editFile(date);
        else if (kind < 80)
            renameFile(date);
        else if (kind < 89)
            removeFile(date);
        else
            changeMetadata(date);
    }
}

void SampleContents::editFile(Date date) {
    const std::string& file = m_random.choice(m_files);
    const auto size = static_cast<double>(fs::file_size(m_home / file));
    if (size > mega)
        return; // nobody cuts films every day
    write(file, m_random.bytes(static_cast<std::size_t>(size * m_random.between(0.8, 1.3)) + 1), date);
}

void SampleContents::renameFile(Date date) {
    std::string& file = m_random.choice(m_files);
    const fs::path old = m_home / file;
    std::string stem = old.stem();
    if (const auto earlier = stem.rfind(" ("); earlier != std::string::npos && stem.ends_with(')'))
        stem.resize(earlier);
    const std::string renamed = fmt::format("{}/{} ({}){}", fs::path(file).parent_path().string(), stem,
                                            m_nextNumber++, old.extension().string());
    fs::rename(old, m_home / renamed);
    setModificationDate(old.parent_path(), date);
    file = renamed;
}

void SampleContents::removeFile(Date date) {
    const std::size_t index = m_random.below(m_files.size());
    const fs::path path = m_home / m_files[index];
    fs::remove(path);
    setModificationDate(path.parent_path(), date);
    m_files.erase(m_files.begin() + static_cast<std::ptrdiff_t>(index));
}

void SampleContents::changeMetadata(Date date) {
    const fs::path path = m_home / m_random.choice(m_files);
    switch (m_random.below(3)) {
    case 0:
        fs::permissions(path, fs::perms::group_read, // its owner keeps working with it
                        m_random.below(2) ? fs::perm_options::remove : fs::perm_options::add);
        break;
    case 1:
        setModificationDate(path, date);
        break;
    default:
        try {
            setExtendedAttribute(path, "com.apple.metadata:_kMDItemUserTags", m_random.bytes(24));
        } catch (const FileError& failure) {
            if (failure.code() != ENOTSUP)
                throw;
        }
    }
}

} // namespace tallyglass
