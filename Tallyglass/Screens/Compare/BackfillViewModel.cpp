#include "Tallyglass/Screens/Compare/BackfillViewModel.h"

#include <algorithm>

namespace tallyglass {

void BackfillViewModel::followModel() {
    m_diff = context()->diff();
    const BackfillModel* backfill = &m_diff->backfill();
    for (const auto topic : {&BackfillModel::pairsChanged, &BackfillModel::progressChanged,
                             &BackfillModel::errorChanged, &BackfillModel::preparesNewBackupsChanged})
        connect(backfill, topic, this, &BackfillViewModel::scheduleUpdate);
    connect(backfill, &BackfillModel::pairsChanged, this, &BackfillViewModel::takePairs);
    takePairs();
}

void BackfillViewModel::update() {
    if (!m_diff)
        followModel();
    m_content = backfillContent(m_diff->backfill());
}

/// The selection stays at the same two backups.
void BackfillViewModel::takePairs() {
    const auto selected = m_selectedPair ? std::optional(m_pairs[*m_selectedPair]) : std::nullopt;
    m_pairs = m_diff->backfill().pairs();
    m_selectedPair.reset();
    if (selected) {
        const auto same = std::ranges::find_if(m_pairs, [&](const AdjacentPair& pair) {
            return pair.from == selected->from && pair.to == selected->to;
        });
        if (same != m_pairs.end())
            m_selectedPair = same - m_pairs.begin();
    }
    emit pairsChanged();
}

void BackfillViewModel::selectPair(std::size_t pair) {
    if (pair >= m_pairs.size() || pair == m_selectedPair)
        return;
    m_selectedPair = pair;
    emit selectedPairChanged();
}

void BackfillViewModel::start() {
    if (m_diff)
        m_diff->backfill().start();
}

void BackfillViewModel::pause() {
    if (m_diff)
        m_diff->backfill().pause();
}

void BackfillViewModel::setPreparesNewBackups(bool prepares) {
    if (m_diff)
        m_diff->backfill().setPreparesNewBackups(prepares);
}

void BackfillViewModel::openPair(int pair) {
    if (pair >= 0 && static_cast<std::size_t>(pair) < m_pairs.size())
        m_diff->comparePair(m_pairs[static_cast<std::size_t>(pair)]);
}

} // namespace tallyglass
