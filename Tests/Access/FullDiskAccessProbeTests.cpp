#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tallyglass {
namespace {

// The lowest free descriptor: the same before and after an operation that leaks none.
int lowestDescriptor() {
    const int descriptor = dup(0);
    close(descriptor);
    return descriptor;
}

TEST(FullDiskAccessProbe, isGrantedByAFileThatOpens) {
    const test::TemporaryFolder folder;
    folder.write("Library/Application Support/com.apple.TCC/TCC.db", "");
    const int before = lowestDescriptor();

    EXPECT_EQ(FullDiskAccessProbe::probe(SystemPaths(folder.path())), FDAStatus::granted);

    EXPECT_EQ(lowestDescriptor(), before);
}

TEST(FullDiskAccessProbe, leavesOpenWhatAMissingFileMeans) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(FullDiskAccessProbe::probe(SystemPaths(folder.path())), FDAStatus::indeterminate);
    EXPECT_EQ(FullDiskAccessProbe::probe(folder.write("file", "") / "TCC.db"), FDAStatus::indeterminate);
}

TEST(FullDiskAccessProbe, leavesOpenWhatPlainPermissionsForbid) {
    constexpr uid_t nobody = 65534;
    const test::TemporaryFolder folder;
    const auto file = folder.write("TCC.db", "");
    chmod(folder.path().c_str(), 0755);
    chmod(file.c_str(), 0);
    const uid_t user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? nobody : user), 0); // root may read everything

    EXPECT_EQ(FullDiskAccessProbe::probe(file), FDAStatus::indeterminate);
    EXPECT_EQ(errno, EACCES);

    ASSERT_EQ(seteuid(user), 0);
}

TEST(FullDiskAccessProbe, takesOnlyOneErrorForDenial) {
    EXPECT_EQ(FullDiskAccessProbe::statusOfOpening(EPERM), FDAStatus::denied);
    EXPECT_EQ(FullDiskAccessProbe::statusOfOpening(EACCES), FDAStatus::indeterminate);
    EXPECT_EQ(FullDiskAccessProbe::statusOfOpening(ENOENT), FDAStatus::indeterminate);
}

} // namespace
} // namespace tallyglass
