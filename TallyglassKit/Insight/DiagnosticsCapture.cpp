#include "TallyglassKit/Insight/DiagnosticsCapture.h"

#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Access/TMUtilResult.h"
#include "TallyglassKit/Insight/Internal/BackupProtection.h"
#include "TallyglassKit/Platform/Deadline.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Files/PrivateFile.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "TallyglassKit/Platform/UserFolders.h"

#include <fmt/core.h>

#include <array>
#include <cerrno>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

namespace tallyglass {

namespace {

using Arguments = TMUtilRunner::Arguments;
using Step = DiagnosticsDump::Step;

/// A random UUID (version 4).
std::string makeUUID() {
    std::random_device random;
    const std::array<unsigned, 4> bits{random(), random(), random(), random()};
    return fmt::format("{:08X}-{:04X}-4{:03X}-{:04X}-{:04X}{:08X}", bits[0], bits[1] >> 16, bits[1] & 0xFFF,
                       0x8000 | (bits[2] >> 16 & 0x3FFF), bits[2] & 0xFFFF, bits[3]);
}

Step stepOf(std::string label, Arguments arguments = {}) {
    return {.id = makeUUID(), .label = std::move(label), .arguments = std::move(arguments)};
}

constexpr auto pairFile = "compare-pair.plist";
constexpr auto singleFile = "compare-single.plist";

class Capture {
public:
    Capture(const TMUtilRunner& runner, std::filesystem::path folder, const OnProbe& progress,
            const std::stop_token& stop, std::chrono::milliseconds killTime)
        : m_runner(runner), m_progress(progress), m_stop(stop), m_killTime(killTime),
          m_dump{.directory = std::move(folder), .steps = {}} {}

    void probe(const std::string& label, const Arguments& arguments, const std::string& file) {
        begin(label);
        Step step = stepOf(label, arguments);
        const auto result = run(step);
        if (result)
            save(step, file, result->stdout);
        else
            discard(file);
        if (result && !result->stderr.empty())
            save(step, errorFile(file), result->stderr);
        else
            discard(errorFile(file));
        m_dump.steps.push_back(std::move(step));
    }

    void compareBackups(std::int64_t depth) {
        const auto backups = m_runner.backupPaths(deadline().token());
        throwIfStopped();
        if (backups.size() < 2) {
            begin("Compare backups");
            for (const char* file : {pairFile, singleFile}) {
                discard(file);
                discard(errorFile(file));
            }
            Step step = stepOf("Compare backups");
            step.error = backups.empty()
                             ? "No backups could be listed — Full Disk Access is probably not granted."
                             : "Only 1 backup found; two are needed to compare.";
            m_dump.steps.push_back(std::move(step));
            return;
        }
        const auto& newer = backups.back();
        probe(fmt::format("Compare last two backups (depth {})", depth),
              {"compare", "-X", "-D", std::to_string(depth), backups[backups.size() - 2], newer}, pairFile);
        probe("Compare latest against live source (depth 1)", {"compare", "-X", "-D", "1", newer},
              singleFile);
    }

    void probeManifest() {
        const std::string name(BackupManifest::fileName);
        begin("Backup manifest");
        Step step = stepOf("Backup manifest");
        const auto directory = ManifestReader(m_runner).machineDirectory(deadline().token());
        throwIfStopped();
        if (directory) {
            const auto path = *directory + "/" + name;
            step.arguments = {path};
            step.error =
                fmt::format("{} exists={} posixReadable={}", path, fileExists(path), isReadable(path));
            readManifest(step, path, name);
        } else {
            step.error = "machinedirectory returned nothing.";
            discard(name);
        }
        m_dump.steps.push_back(std::move(step));
    }

    DiagnosticsDump finish() {
        throwIfStopped();
        writePrivateFile(m_dump.directory / "manifest.txt", m_dump.manifest());
        return std::move(m_dump);
    }

private:
    [[nodiscard]] Deadline deadline() const { return {m_killTime, m_stop}; }

    void throwIfStopped() const {
        if (m_stop.stop_requested())
            throw Cancelled();
    }

    void begin(const std::string& label) const {
        throwIfStopped();
        if (m_progress)
            m_progress(label);
    }

    /// Absent, with the reason in the step, if the probe couldn't start or took too long.
    std::optional<TMUtilResult> run(Step& step) const {
        try {
            auto result = m_runner.runRaw(step.arguments, m_killTime, nullptr, deadline().token());
            step.exitCode = result.exitCode;
            step.byteCount = static_cast<std::int64_t>(result.stdout.size());
            return result;
        } catch (const Cancelled&) {
            throwIfStopped();
            step.error =
                fmt::format("Timed out after {:g} s.", std::chrono::duration<double>(m_killTime).count());
        } catch (const TMUtilError& failure) {
            step.error = failure.errorDescription();
        }
        return std::nullopt;
    }

    /// Continues the report in the step's error.
    void readManifest(Step& step, const std::string& path, const std::string& name) const {
        auto& report = *step.error;
        try {
            const auto bytes = readFile(path, m_stop, PropertyList::mostBytes);
            step.exitCode = 0;
            step.byteCount = static_cast<std::int64_t>(bytes.size());
            writePrivateFile(m_dump.directory / name, bytes);
            report += fmt::format(" → parsed {} entries", BackupManifest::parse(bytes).size());
            step.errorIsReport = true;
        } catch (const BackupManifestError&) { // then the report ends here, and the file can be examined
        } catch (const FileError& failure) {
            report +=
                fmt::format(" → {} failed: {}", step.exitCode ? "write" : "read", failure.errorDescription());
            discard(name);
        }
    }

    void save(Step& step, const std::string& file, std::string_view bytes) const {
        try {
            writePrivateFile(m_dump.directory / file, bytes);
        } catch (const FileError& failure) {
            step.error = failure.errorDescription();
            discard(file);
        }
    }

    /// Removes what an earlier capture has saved under this name.
    void discard(const std::string& file) const {
        const auto path = m_dump.directory / file;
        std::error_code ignored; // then it stays, and the summary tells what this capture found
        if (const auto status = FileStatus::of(path); status && !status->isFolder())
            std::filesystem::remove(path, ignored);
    }

    static std::string errorFile(const std::string& file) { return file + ".stderr.txt"; }

    const TMUtilRunner& m_runner;
    const OnProbe& m_progress;
    const std::stop_token& m_stop;
    const std::chrono::milliseconds m_killTime;
    DiagnosticsDump m_dump;
};

} // namespace

std::filesystem::path diagnosticsFolder(const std::filesystem::path& desktop) {
    return desktop / "Tallyglass Diagnostics";
}

std::filesystem::path makeDiagnosticsFolder(const std::filesystem::path& folder) {
    auto path = outsideBackups(folder);
    if (const auto status = FileStatus::of(path); status && status->kind == FileStatus::Kind::symbolicLink)
        throw FileError(ELOOP, folder, "This is a link, and diagnostics are only saved in a folder");
    makePrivateFolder(path);
    return path;
}

DiagnosticsDump captureDiagnostics(const TMUtilRunner& runner,
                                   const std::optional<std::filesystem::path>& into, std::int64_t depth,
                                   const OnProbe& progress, const std::stop_token& stop,
                                   std::chrono::milliseconds killTime) {
    Capture capture(runner, makeDiagnosticsFolder(into ? *into : diagnosticsFolder(desktopFolder())),
                    progress, stop, killTime);
    capture.probe("Destination info", {"destinationinfo", "-X"}, "destinationinfo.plist");
    capture.probe("Engine status", {"status"}, "status.txt");
    capture.probe("Machine directory", {"machinedirectory"}, "machinedirectory.txt");
    capture.probe("Backup list", {"listbackups"}, "listbackups.txt");
    capture.probe("Latest backup", {"latestbackup"}, "latestbackup.txt");
    capture.compareBackups(depth);
    capture.probeManifest();
    return capture.finish();
}

} // namespace tallyglass
