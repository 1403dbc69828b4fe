#include "Tallyglass/Models/DiffModel.h"

#include "Tallyglass/Models/ComparisonProgress.h"
#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"

#include <algorithm>

namespace tallyglass {

/// What looking for backups gave: they, or why there are none. Neither where a failure leaves the old ones.
struct DiffModel::Listing {
    std::optional<std::vector<BackupChoice>> backups;
    std::optional<std::string> unavailableReason;
};

struct DiffModel::Result {
    Comparison comparison;
    std::vector<ChangeRecord> changes;
};

namespace {

using Choices = std::vector<DiffModel::BackupChoice>;

/// The backups of the first destination as the helper's copy of the manifest tells them, which works without
/// any permission. Absent if there is no such copy, or nothing in it.
std::optional<Choices> reconstructedBackups(const SystemPaths& paths, const ManifestReader& reader,
                                            const std::stop_token& stop) {
    const auto settings = TimeMachinePreferences().read(paths);
    if (!settings || settings->destinations.empty())
        return std::nullopt;
    const auto& identifier = settings->destinations.front().destinationUUID;
    if (!identifier)
        return std::nullopt;
    try {
        Choices choices;
        for (const BackupManifestEntry& entry : reader.readExport(stop))
            choices.push_back({paths.path(BackupPath::reconstructRoot(*identifier, entry.completionDate)),
                               entry.completionDate});
        if (choices.empty())
            return std::nullopt;
        return choices;
    } catch (const Error&) {
        return std::nullopt;
    }
}

} // namespace

DiffModel::DiffModel(AppEnvironment environment, QObject* parent)
    : DiffModel(std::move(environment), nullptr, parent) {}

DiffModel::DiffModel(AppEnvironment environment, std::shared_ptr<DiffSession> session, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_session(std::move(session)) {}

DiffModel::~DiffModel() = default;

CompareOptions DiffModel::options() const {
    return CompareOptions::fromFlags(depth(), unlimitedDepth(), compareExtendedAttributes());
}

bool DiffModel::canRun() const {
    return fromPath() && toPath() && fromPath() != toPath() && !progressText();
}

void DiffModel::prepare() {
    if (m_session)
        return loadBackups();
    m_prepareTask = startTask(
        this,
        [runner = m_environment.runner](TaskContext&) {
            return std::make_shared<DiffSession>(runner, TallyglassDatabase::defaultURL());
        },
        [this](std::shared_ptr<DiffSession> session) {
            m_session = std::move(session);
            loadBackups();
        },
        [this](const std::exception_ptr& failure) { m_error.setValue(cacheFailure(failure)); });
}

void DiffModel::loadBackups() {
    m_isLoadingBackups.setValue(true);
    m_listTask = startTask(
        this,
        [paths = m_environment.paths, session = m_session,
         reader = ManifestReader(m_environment.manifestTool, m_environment.paths)](TaskContext& task) {
            if (auto choices = reconstructedBackups(paths, reader, task.stopToken()))
                return Listing{.backups = std::move(choices), .unavailableReason = {}};
            Choices choices;
            if (session) {
                for (auto& backup : session->engine().availableBackupsThrowing(task.stopToken()))
                    choices.push_back({std::move(backup.path), backup.date});
            }
            if (choices.empty())
                return Listing{.backups = Choices(), .unavailableReason = BackupListing::message()};
            return Listing{.backups = std::move(choices), .unavailableReason = {}};
        },
        [this](const Listing& listing) { take(listing); },
        [this](const std::exception_ptr& failure) {
            take(Listing{.backups = {}, .unavailableReason = BackupListing::message(failure)});
        });
}

void DiffModel::take(const Listing& listing) {
    if (listing.backups)
        m_backups.setValue(*listing.backups);
    m_unavailableReason.setValue(listing.unavailableReason);
    if (!listing.unavailableReason && !backups().empty()) {
        const auto& choices = backups();
        const auto isOffered = [&](const std::optional<std::string>& path) {
            return path && std::ranges::find(choices, *path, &BackupChoice::path) != choices.end();
        };
        if (!isOffered(fromPath()))
            setFromPath(choices[choices.size() >= 2 ? choices.size() - 2 : 0].path);
        if (!isOffered(toPath()))
            setToPath(choices.back().path);
    }
    m_isLoadingBackups.setValue(false);
}

void DiffModel::run(bool useCache) {
    if (!m_session || !fromPath() || !toPath())
        return;
    m_error.setValue(std::nullopt);
    m_progressText.setValue("Comparing…");
    m_runTask = startTask(
        this,
        [session = m_session, from = *fromPath(), to = *toPath(), options = options(),
         useCache](TaskContext& task) -> std::optional<Result> {
            // The result itself is what tells that it is finished, once its rows are there.
            const auto unlessFinished = [post = task.post(&DiffModel::apply)](const auto& progress) {
                if (!std::holds_alternative<Comparison>(progress))
                    post(progress);
            };
            Result result;
            result.comparison =
                session->engine().compare(from, to, options, useCache, unlessFinished, task.stopToken());
            if (task.stopToken().stop_requested())
                return std::nullopt; // it ended at the very moment of the cancellation: it stays in the cache
            result.changes = session->store().changes(result.comparison.id, std::nullopt, std::nullopt,
                                                      rowLimit, 0, task.stopToken());
            return result;
        },
        [this](std::optional<Result> result) {
            if (result)
                take(std::move(*result));
            m_progressText.setValue(std::nullopt);
        },
        [this](const std::exception_ptr& failure) {
            m_error.setValue(comparisonFailure(failure));
            m_progressText.setValue(std::nullopt);
        });
}

void DiffModel::cancel() {
    m_runTask.stop();
}

void DiffModel::take(Result result) {
    m_visibleRows.clear(); // they are indices of the old rows
    m_comparison.setValue(std::move(result.comparison));
    m_changes.setValue(std::move(result.changes));
    filterRows();
}

void DiffModel::show(const Shown& shown) {
    take(Listing{.backups = shown.backups, .unavailableReason = shown.unavailableReason});
    m_visibleRows.clear();
    m_comparison.setValue(shown.comparison);
    m_changes.setValue(shown.changes);
    m_progressText.setValue(shown.progressText);
    m_error.setValue(shown.error);
    filterRows();
}

void DiffModel::apply(const DiffEngine::Progress& progress) {
    m_progressText.setValue(tallyglass::progressText(progress));
}

void DiffModel::setShowContentChangesOnly(bool contentOnly) {
    if (std::exchange(m_showContentChangesOnly, contentOnly) != contentOnly)
        filterRows();
}

void DiffModel::setKindFilter(const std::set<ChangeKind>& kinds) {
    if (std::exchange(m_kindFilter, kinds) != kinds)
        filterRows();
}

void DiffModel::setSearchText(const std::string& text) {
    if (std::exchange(m_searchText, text) != text)
        filterRows();
}

void DiffModel::filterRows() {
    const ChangeFilter filter(m_showContentChangesOnly, m_searchText, m_kindFilter);
    m_visibleRows.clear();
    for (std::uint32_t index = 0; const ChangeRecord& change : changes()) {
        if (filter.keeps(change))
            m_visibleRows.push_back(index);
        ++index;
    }
    emit changed();
}

std::vector<ChangeRecord> DiffModel::visibleChanges() const {
    std::vector<ChangeRecord> rows;
    rows.reserve(m_visibleRows.size());
    for (const std::uint32_t index : m_visibleRows)
        rows.push_back(changes()[index]);
    return rows;
}

} // namespace tallyglass
