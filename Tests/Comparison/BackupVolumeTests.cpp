#include "TallyglassKit/Comparison/BackupVolume.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

TEST(VolumeComponent, isTheFirstFolderThatIsntHidden) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(volumeComponent(folder.path()), std::nullopt);
    folder.write(".hidden/x", "");
    folder.write("A file", "");
    EXPECT_EQ(volumeComponent(folder.path()), std::nullopt);
    folder.write("Zeta/x", "");
    folder.write("Macintosh HD - Data/x", "");
    EXPECT_EQ(volumeComponent(folder.path()), "Macintosh HD - Data");
    EXPECT_EQ(volumeComponent(folder / "nowhere"), std::nullopt);
}

} // namespace
} // namespace tallyglass
