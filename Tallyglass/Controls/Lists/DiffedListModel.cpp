#include "Tallyglass/Controls/Lists/DiffedListModel.h"

#include "Tallyglass/Controls/QtConversions.h"

#include <algorithm>

namespace tallyglass {

void DiffedListModel::setCurrentRow(int row) {
    const bool exists = row >= 0 && row < m_count;
    m_currentKey = exists ? std::optional(m_keys[static_cast<std::size_t>(row)]) : std::nullopt;
    moveCurrentRow(exists ? row : -1);
}

void DiffedListModel::moveCurrentRow(int row) {
    if (std::exchange(m_currentRow, row) != row)
        emit currentRowChanged();
}

QString DiffedListModel::keyAt(int row) const {
    return row >= 0 && row < m_count ? toQString(m_keys[static_cast<std::size_t>(row)]) : QString();
}

int DiffedListModel::rowAfterReplacement(int formerRow) const {
    int row = formerRow;
    for (const auto& [kind, first, length] : m_changes) {
        if (row < first)
            continue;
        row = kind == ListChange::Kind::insert ? row + length : std::max(first, row - length);
    }
    return std::min(row, m_count - 1);
}

int DiffedListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_count;
}

void DiffedListModel::startReplacement(std::vector<std::string> keys) {
    emit aboutToReplaceRows();
    m_changes = listChanges(m_keys, keys);
    m_keys = std::move(keys);
}

void DiffedListModel::finishReplacement() {
    if (m_currentKey) {
        const auto current = std::ranges::find(m_keys, *m_currentKey);
        moveCurrentRow(current == m_keys.end() ? -1 : static_cast<int>(current - m_keys.begin()));
    }
    emit rowsReplaced();
}

} // namespace tallyglass
