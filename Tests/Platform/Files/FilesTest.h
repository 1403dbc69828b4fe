// The fixture of the tests on files: a temporary folder, and what failures they expect.

#pragma once

#include "TallyglassKit/Platform/Files/FileError.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace tallyglass::test {

class FilesTest : public testing::Test {
protected:
    /// The error number with which `work` fails, 0 if it doesn't.
    template <typename Work>
    static int failure(const Work& work) {
        try {
            work();
            return 0;
        } catch (const FileError& error) {
            return error.code();
        }
    }

    /// Drops root's rights for the test.
    template <typename Work>
    void asOrdinaryUser(const Work& work) {
        std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
        const auto child = [&] {
            if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
                std::_Exit(2);
            work();
            std::_Exit(HasFailure() ? 1 : 0);
        };
        EXPECT_EXIT(child(), testing::ExitedWithCode(0), "");
    }

    ResourceGuard m_guard;
    TemporaryFolder folder;
};

} // namespace tallyglass::test
