#include "Tallyglass/Models/DiffModel.h"

#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"
#include "TallyglassKit/Comparison/ComparableBackups.h"
#include "TallyglassKit/Comparison/ComparisonProgress.h"

#include <algorithm>
#include <utility>

namespace tallyglass {

DiffModel::DiffModel(AppEnvironment environment, QObject* parent)
    : QObject(parent), m_environment(std::move(environment)), m_job(m_environment),
      m_backfill(m_environment) {
    m_backfill.setOptions(options());
    connect(&m_job, &ComparisonJob::progressChanged, this, &DiffModel::progressChanged);
    connect(&m_job, &ComparisonJob::elapsedChanged, this, &DiffModel::elapsedChanged);
    connect(&m_job, &ComparisonJob::errorChanged, this, &DiffModel::errorChanged);
    connect(&m_job, &ComparisonJob::resultChanged, this, [this] {
        filterRows(); // first: the indices are of the previous rows
        emit resultChanged();
    });
    connect(this, &DiffModel::optionsChanged, &m_backfill, [this] { m_backfill.setOptions(options()); });
    connect(&m_job, &ComparisonJob::succeeded, &m_backfill, &BackfillModel::reload);
}

DiffModel::~DiffModel() = default;

CompareOptions DiffModel::options() const {
    return CompareOptions::fromFlags(depth(), unlimitedDepth(), compareExtendedAttributes());
}

bool DiffModel::canRun() const {
    return fromPath() && toPath() && fromPath() != toPath() && !m_job.isRunning();
}

void DiffModel::prepare() {
    if (m_environment.cache->isOpen())
        return loadBackups();
    m_prepareTask = startTask(
        this, [cache = m_environment.cache](TaskContext& task) { cache->open(task.stopToken()); },
        [this] { loadBackups(); },
        [this](const std::exception_ptr& failure) { m_cacheError.setValue(cacheFailure(failure)); });
}

void DiffModel::loadBackups() {
    m_isLoadingBackups.setValue(true);
    m_listTask = startTask(
        this,
        [paths = m_environment.paths, cache = m_environment.cache,
         reader = ManifestReader(m_environment.runner, m_environment.paths)](TaskContext& task) {
            const DiffEngine* engine = cache->isOpen() ? &cache->open().engine() : nullptr;
            return ComparableBackups::find(paths, reader, engine, task.stopToken());
        },
        [this](const ComparableBackups& found) {
            m_backups.setValue(found.backups);
            take(found);
        },
        [this](const std::exception_ptr& failure) {
            take({.backups = {}, .unavailableReason = BackupListing::message(failure)});
        });
}

void DiffModel::compareWhenListed(const std::string& from, const std::string& to) {
    setFromPath(from);
    setToPath(to);
    m_runsWhenListed = true;
    prepare();
}

void DiffModel::comparePair(const AdjacentPair& pair) {
    const CompareOptions& options = m_backfill.options();
    setUnlimitedDepth(!options.depth);
    if (options.depth)
        setDepth(*options.depth);
    setCompareExtendedAttributes(options.properties.contains(CompareOptions::Property::extendedAttributes));
    compareWhenListed(pair.from, pair.to);
}

void DiffModel::take(const ComparableBackups& found) {
    m_unavailableReason.setValue(found.unavailableReason);
    bool runs = std::exchange(m_runsWhenListed, false);
    if (const auto& choices = found.backups; !choices.empty()) {
        const auto isOffered = [&](const std::optional<std::string>& path) {
            return path && std::ranges::find(choices, *path, &BackupChoice::path) != choices.end();
        };
        runs = runs && isOffered(fromPath()) && isOffered(toPath());
        if (!isOffered(fromPath()))
            setFromPath(choices[choices.size() >= 2 ? choices.size() - 2 : 0].path);
        if (!isOffered(toPath()))
            setToPath(choices.back().path);
    }
    m_isLoadingBackups.setValue(false);
    m_backfill.prepare();
    if (runs)
        run(true);
}

void DiffModel::run(bool useCache) {
    if (!m_environment.cache->isOpen() || !fromPath() || !toPath())
        return;
    m_cacheError.setValue(std::nullopt);
    m_job.start(*fromPath(), *toPath(), options(), useCache);
}

template <typename Value>
void DiffModel::setFilter(Value& filter, const Value& value) {
    if (std::exchange(filter, value) == value)
        return;
    emit filterChanged();
    filterRows();
}

void DiffModel::setShowContentChangesOnly(bool contentOnly) {
    setFilter(m_showContentChangesOnly, contentOnly);
}

void DiffModel::setKindFilter(const std::set<ChangeKind>& kinds) {
    setFilter(m_kindFilter, kinds);
}

void DiffModel::setSearchText(const std::string& text) {
    setFilter(m_searchText, text);
}

void DiffModel::filterRows() {
    const ChangeFilter filter(m_showContentChangesOnly, m_searchText, m_kindFilter);
    m_visibleRows.clear();
    for (std::uint32_t index = 0; const ChangeRecord& change : changes()) {
        if (filter.keeps(change))
            m_visibleRows.push_back(index);
        ++index;
    }
    emit rowsChanged();
}

std::vector<ChangeRecord> DiffModel::visibleChanges() const {
    std::vector<ChangeRecord> rows;
    rows.reserve(m_visibleRows.size());
    for (const std::uint32_t index : m_visibleRows)
        rows.push_back(changes()[index]);
    return rows;
}

} // namespace tallyglass
