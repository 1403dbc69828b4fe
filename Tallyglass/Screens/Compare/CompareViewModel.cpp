#include "Tallyglass/Screens/Compare/CompareViewModel.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Comparison/ChangeFilter.h"

#include <algorithm>

namespace tallyglass {

namespace {

constexpr int largestDepth = 12;

/// The first of the rows that the filters keep, copied.
std::vector<ChangeRecord> firstRows(const DiffModel& diff) {
    const auto& visible = diff.visibleRows();
    const std::size_t count = std::min(visible.size(), CompareResultsContent::rowLimit);
    std::vector<ChangeRecord> rows;
    rows.reserve(count);
    for (std::size_t row = 0; row < count; ++row)
        rows.push_back(diff.changes()[visible[row]]);
    return rows;
}

} // namespace

void CompareViewModel::followModel() {
    m_diff = context()->diff();
    for (const auto topic :
         {&DiffModel::backupsChanged, &DiffModel::selectionChanged, &DiffModel::optionsChanged,
          &DiffModel::progressChanged, &DiffModel::resultChanged, &DiffModel::errorChanged,
          &DiffModel::filterChanged, &DiffModel::rowsChanged})
        connect(m_diff, topic, this, &CompareViewModel::scheduleUpdate);
    connect(m_diff, &DiffModel::elapsedChanged, this, &CompareViewModel::updateElapsed);
    m_diff->prepare();
}

void CompareViewModel::appear() {
    if (m_diff)
        m_diff->prepare();
}

void CompareViewModel::update() {
    const bool wasLocked = m_isLocked;
    m_isLocked = model()->fdaStatus() != FDAStatus::granted;
    if (!m_diff)
        followModel();
    else if (wasLocked && !m_isLocked)
        appear(); // the backups may be readable now
    m_error = toQString(m_diff->error().value_or(""));
    updatePicker();
    updateResults();
}

void CompareViewModel::updatePicker() {
    const bool hasOtherBackups = m_backups.setChoices(m_diff->backups());
    ComparePickerContent content = comparePickerContent(*m_diff);
    content.fromIndex = m_backups.indexOf(m_diff->fromPath());
    content.toIndex = m_backups.indexOf(m_diff->toPath());
    updateElapsed();
    m_picker = content;
    if (hasOtherBackups)
        emit pickerChanged(); // a ComboBox forgets its index when its list is empty in between
}

void CompareViewModel::updateElapsed() {
    m_elapsed = toQString(m_diff->elapsedText());
}

void CompareViewModel::updateResults() {
    const auto& comparison = m_diff->comparison();
    if (comparison != m_counted) {
        m_counted = comparison;
        m_metadataOnly = metadataOnlyCount(m_diff->changes());
    }
    m_hasSummary = comparison.has_value();
    if (comparison) {
        m_summary = compareSummaryContent(*comparison);
        m_olderRoot = toQString(comparison->fromPath);
        m_newerRoot = toQString(comparison->toPath);
    }
    m_hasResults = !m_diff->changes().empty();
    m_results = compareResultsContent(*m_diff, m_metadataOnly);
    m_rows.setRows(firstRows(*m_diff));
}

void CompareViewModel::compareBackups(const QString& olderRoot, const QString& newerRoot) {
    if (m_diff)
        m_diff->compareWhenListed(olderRoot.toStdString(), newerRoot.toStdString());
}

void CompareViewModel::pickFrom(int backup) {
    if (const auto path = m_backups.pathAt(backup))
        m_diff->setFromPath(path);
}

void CompareViewModel::pickTo(int backup) {
    if (const auto path = m_backups.pathAt(backup))
        m_diff->setToPath(path);
}

void CompareViewModel::setCompareExtendedAttributes(bool compares) {
    if (m_diff)
        m_diff->setCompareExtendedAttributes(compares);
}

void CompareViewModel::setDepth(int depth) {
    if (m_diff)
        m_diff->setDepth(std::clamp(depth, 1, largestDepth));
}

void CompareViewModel::setUnlimitedDepth(bool isUnlimited) {
    if (m_diff)
        m_diff->setUnlimitedDepth(isUnlimited);
}

void CompareViewModel::compare() {
    if (m_diff && m_diff->canRun())
        m_diff->run(true);
}

void CompareViewModel::rerun() {
    if (m_diff)
        m_diff->run(false);
}

void CompareViewModel::cancel() {
    if (m_diff)
        m_diff->cancel();
}

void CompareViewModel::setSearchText(const QString& text) {
    if (m_diff)
        m_diff->setSearchText(text.toStdString());
}

void CompareViewModel::setContentOnly(bool contentOnly) {
    if (m_diff)
        m_diff->setShowContentChangesOnly(contentOnly);
}

void CompareViewModel::toggleKind(int position) {
    if (!m_diff || position < 0 || position >= static_cast<int>(allChangeKinds.size()))
        return;
    const ChangeKind kind = allChangeKinds[static_cast<std::size_t>(position)];
    auto kinds = m_diff->kindFilter();
    if (kinds.erase(kind) == 0)
        kinds.insert(kind);
    m_diff->setKindFilter(kinds);
}

} // namespace tallyglass
