// The files of the sample machine's user, and what happens to them from one backup to the next: they are
// added, edited, renamed, removed, and sometimes only their permissions, dates or attributes change. All
// dates are the caller's.
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
    /// `home` is the user's folder, which create() creates.
    SampleContents(std::filesystem::path home, SeededRandom& random)
        : m_home(std::move(home)), m_random(random) {}

    /// Creates `files` files, dated within the year before `first`.
    void create(int files, Date first);

    /// The changes between two backups, proportional to the time between them and to the number of files.
    void evolve(Date from, Date to);

    /// Folders under the home that are excluded by the settings, and by their own marker.
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

/// Sets the date of the item; links aren't followed.
void setModificationDate(const std::filesystem::path& item, Date date);

} // namespace tallyglass
