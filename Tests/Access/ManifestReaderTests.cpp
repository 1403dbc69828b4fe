#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "Tests/Access/FakeRunner.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tallyglass {
namespace {

const std::string exportFile = std::string(ManifestReader::exportPath.substr(1));

std::string manifest(int xid) {
    return "<plist><array><date>2026-07-20T12:29:43Z</date><dict><key>xid</key><integer>" +
           std::to_string(xid) + "</integer></dict></array></plist>";
}

class Manifest : public testing::Test {
protected:
    // A reader for a machine whose tmutil names the folder "machine" as machine directory.
    ManifestReader reader() { return reader(test::FakeRunner((m_folder / "machine").string() + "\n")); }
    ManifestReader reader(const TMUtilRunner& runner) {
        return ManifestReader(runner, SystemPaths(m_folder.path()));
    }

    // The result of read(): the identifier of the one entry, or the error text.
    static std::string outcome(const ManifestReader& reader) {
        try {
            return std::to_string(reader.read().at(0).xid.value());
        } catch (const BackupManifestError& error) {
            return error.errorDescription();
        }
    }

    test::TemporaryFolder m_folder;
};

TEST_F(Manifest, comesFromTheExportFirst) {
    m_folder.write(exportFile, manifest(1));
    m_folder.write("machine/backup_manifest.plist", manifest(2));
    const test::FakeRunner runner((m_folder / "machine").string());

    EXPECT_EQ(outcome(reader(runner)), "1");
    EXPECT_EQ(reader().readExport().at(0).xid, 1);
    EXPECT_TRUE(runner.calls().empty());
}

TEST_F(Manifest, comesFromTheMachineDirectoryWithoutAnExport) {
    m_folder.write("machine/backup_manifest.plist", manifest(2));
    EXPECT_EQ(outcome(reader()), "2");
}

TEST_F(Manifest, failsForACorruptExportThoughTheOriginalIsReadable) {
    m_folder.write(exportFile, "<plist><dict/></plist>");
    m_folder.write("machine/backup_manifest.plist", manifest(2));
    EXPECT_EQ(outcome(reader()), "Could not read the backup manifest: Unexpected manifest shape.");
}

TEST_F(Manifest, failsWithoutAMachineDirectory) {
    const std::string unavailable = "Could not locate the backup's machine directory.";
    EXPECT_EQ(outcome(reader(TMUtilRunner((m_folder / "missing").string()))), unavailable);
    EXPECT_EQ(outcome(reader(test::FakeRunner(" \n\t\r\n"))), unavailable);
    EXPECT_EQ(outcome(reader(test::FakeRunner(1, "No machine directory found for host."))), unavailable);
}

TEST_F(Manifest, saysWhyTheFileInTheMachineDirectoryCanNotBeRead) {
    const std::string text = outcome(reader());
    EXPECT_EQ(text.rfind("Could not read the backup manifest: ", 0), 0) << text;
    EXPECT_NE(text.find("No such file or directory"), std::string::npos) << text;
}

TEST_F(Manifest, isRefusedBeforeItIsLoadedWhenItIsTooLarge) {
    for (const std::string& file : {std::string("machine/backup_manifest.plist"), exportFile}) {
        std::filesystem::resize_file(m_folder.write(file, ""), std::uintmax_t{6} << 30);
        const std::string text = outcome(reader());
        EXPECT_EQ(text,
                  "Could not read the backup manifest: " + (m_folder / file).string() + ": File too large");
    }
}

TEST_F(Manifest, isReadAsExportAloneOrNotAtAll) {
    m_folder.write("machine/backup_manifest.plist", manifest(2));
    EXPECT_THROW((void)reader().readExport(), FileError);
    EXPECT_FALSE(reader().isHelperInstalled());

    m_folder.write(exportFile, "corrupt");
    EXPECT_THROW((void)reader().readExport(), BackupManifestError);
    EXPECT_TRUE(reader().isHelperInstalled());
}

TEST_F(Manifest, endsInTheCancellationWhenStopped) {
    std::stop_source source;
    const test::FakeRunner runner([&source](std::stop_token) -> TMUtilResult {
        source.request_stop();
        throw Cancelled();
    });
    EXPECT_THROW((void)reader(runner).read(source.get_token()), Cancelled);
    EXPECT_EQ(reader(runner).machineDirectory(source.get_token()), std::nullopt);
}

TEST_F(Manifest, trimsTheMachineDirectory) {
    const test::FakeRunner runner("\r\n /Volumes/My Disk \t\n");
    EXPECT_EQ(reader(runner).machineDirectory(), "/Volumes/My Disk");
    EXPECT_EQ(runner.calls(), (std::vector<test::FakeRunner::Arguments>{{"machinedirectory"}}));
}

} // namespace
} // namespace tallyglass
