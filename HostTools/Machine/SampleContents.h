// The files of the sample machine's user, and what happens to them from one backup to the next: they are
// added, edited, renamed, removed, and sometimes only their permissions, dates or attributes change. Every
// date comes from the caller, none from the clock.
//
// One thread. The same seed and calls give the same tree.

#pragma once

#include "HostTools/Machine/SeededRandom.h"
#include "TallyglassKit/Platform/Date.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tallyglass {

class SampleContents {
public:
    /// `home` is the user's folder, which create() makes.
    SampleContents(std::filesystem::path home, SeededRandom& random)
        : m_home(std::move(home)), m_random(random) {}

    /// Makes `files` files, dated within the year before `first`.
    void create(int files, Date first);

    /// What happens between two backups: more the longer they lie apart, and in proportion to the files.
    void evolve(Date from, Date to);

    /// Folders under the home that backups leave out by the settings, and by their own marker.
    [[nodiscard]] static std::vector<std::string> skippedFolders();
    [[nodiscard]] static std::string markedFolder();

private:
    struct Place;

    [[nodiscard]] static const std::vector<Place>& places();
    [[nodiscard]] std::string newName(const Place& place);
    void addFile(const Place& place, Date date);
    void editFile(Date date);
    void renameFile(Date date);
    void removeFile(Date date);
    void changeMetadata(Date date);
    void write(const std::string& file, const std::string& contents, Date date) const;
    void makeFolder(const std::filesystem::path& folder, Date date) const;

    std::filesystem::path m_home;
    SeededRandom& m_random;
    std::vector<std::string> m_files; ///< paths under the home
    int m_nextNumber = 100;
};

/// Dates the item itself, a link not being followed.
void setModificationDate(const std::filesystem::path& item, Date date);

} // namespace tallyglass
