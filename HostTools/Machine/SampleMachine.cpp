#include "HostTools/Machine/SampleMachine.h"

#include "HostTools/Machine/BackupRun.h"
#include "HostTools/Machine/LinkCopier.h"
#include "HostTools/Machine/MachineSetup.h"
#include "HostTools/Machine/SampleContents.h"
#include "HostTools/Machine/SampleSchedule.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/core.h>

namespace tallyglass {

namespace fs = std::filesystem;

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double usedFraction = 0.8;
constexpr auto unfinishedMark = ".unfinished";

std::string seededUUID(SeededRandom& random) {
    const std::uint64_t high = random.next();
    const std::uint64_t low = random.next();
    return fmt::format("{:08X}-{:04X}-4{:03X}-{:04X}-{:012X}", high >> 32, high >> 16 & 0xFFFF, high & 0xFFF,
                       (low >> 48 & 0x3FFF) | 0x8000, low & 0xFFFFFFFFFFFF);
}

class SampleMaker {
public:
    explicit SampleMaker(const SampleMachineOptions& options)
        : m_options(options), m_machine(SystemPaths(options.root)), m_random(options.seed),
          m_home(m_machine.under("/Users/alex")), m_contents(m_home, m_random) {}

    void make() {
        claimRoot();
        const auto attempts = sampleSchedule(m_options.backups, m_options.now, m_random);
        m_contents.create(m_options.files, attempts.front().start - Seconds(600));
        setUp();
        int done = 0;
        for (std::size_t index = 0; index < attempts.size(); ++index) {
            if (m_options.progress)
                m_options.progress(done, m_options.backups);
            if (index > 0)
                m_contents.evolve(attempts[index - 1].start + Seconds(1800), attempts[index].start);
            attempt(attempts[index]);
            done += attempts[index].result == BackupResult::success;
        }
        if (m_options.progress)
            m_options.progress(done, m_options.backups);
        stateQuota();
        fs::remove(m_machine.root() / unfinishedMark);
    }

private:
    void claimRoot() const {
        const fs::path root = m_machine.root();
        if (fs::exists(root / unfinishedMark))
            throw Error(fmt::format("{} holds a sample machine that was not finished. Remove it first.",
                                    root.string()));
        if (fs::exists(root) && !fs::is_empty(root))
            throw Error(fmt::format("{} is not empty.", root.string()));
        replaceFile(root / unfinishedMark, "");
    }

    void setUp() {
        // A decomposed name, as disks have.
        setUpMachine(m_machine, {.sources = {m_machine.under("/Users")},
                                 .destination = m_machine.mountPoint("Backups of Zoe\u0308"),
                                 .destinationName = "Backups of Zoe\u0308",
                                 .volumeName = "Macintosh HD - Data",
                                 .quota = std::int64_t{1} << 50, // until the used space is known
                                 .makeUUID = [this] { return seededUUID(m_random); },
                                 .durability = Durability::memory});
        HostPreferences::edit(
            m_machine,
            [&](HostPreferences& preferences) {
                for (const std::string& folder : SampleContents::skippedFolders())
                    preferences.skipPaths.push_back(m_home / folder);
            },
            Durability::memory);
        const Date installed = m_options.now - std::chrono::hours(24 * 800);
        setModificationDate(m_machine.under("/Users"), installed);
    }

    void attempt(const SampleAttempt& planned) {
        if (planned.result != BackupResult::success)
            HostPreferences::edit(
                m_machine, [&](HostPreferences& preferences) { preferences.nextResult = planned.result; },
                Durability::memory);
        m_clock = planned.start;
        // Files that the program keeps in the root must not change the date of the backed-up volume.
        setModificationDate(m_machine.root(), m_options.now - std::chrono::hours(24 * 800));
        auto run = BackupRun::begin(m_machine, {.clock = [this] { return m_clock; },
                                                .durability = Durability::memory,
                                                .copier = std::make_unique<LinkCopier>(),
                                                .watch = [this](const RunState& state) { pass(state); }});
        const std::int64_t result = run->perform();
        if (result != planned.result)
            throw Error(fmt::format("A sample backup ended with {}: {}", result, run->failure()));
    }

    /// Advances the clock by the time of a phase on an average disk.
    void pass(const RunState& state) {
        if (state.phase == m_phase)
            return;
        m_phase = state.phase;
        const bool isCopying = state.phase == BackupPhase::copying;
        m_clock += Seconds(m_random.between(2, 12));
        if (isCopying)
            m_clock += Seconds(m_random.between(10, 40) + static_cast<double>(state.totalBytes) / 50'000);
    }

    /// Sets the destination's size so that the backups take the given share of it.
    void stateQuota() const {
        HostPreferences::edit(m_machine, [&](HostPreferences& preferences) {
            HostDestination& destination = preferences.destinations.front();
            destination.quota =
                static_cast<std::int64_t>(static_cast<double>(destination.bytesUsed) / usedFraction);
            destination.refresh(m_machine.backups(destination.uuid));
        });
    }

    const SampleMachineOptions& m_options;
    MachinePaths m_machine;
    SeededRandom m_random;
    fs::path m_home;
    SampleContents m_contents;
    Date m_clock;
    BackupPhase m_phase = BackupPhase::finishing;
};

} // namespace

void makeSampleMachine(const SampleMachineOptions& options) {
    SampleMaker(options).make();
}

} // namespace tallyglass
