#include "Tallyglass/Controls/Lists/ChangeListModel.h"

#include "Tallyglass/Controls/Lists/ChangeRowContent.h"
#include "Tallyglass/Controls/QtConversions.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace tallyglass {

namespace {

std::vector<std::string_view> pathsOf(const std::vector<ChangeRecord>& rows) {
    std::vector<std::string_view> paths;
    paths.reserve(rows.size());
    for (const ChangeRecord& row : rows)
        paths.emplace_back(row.path);
    return paths;
}

/// Of two rows with the same path.
bool looksLike(const ChangeRecord& one, const ChangeRecord& other) {
    return one.kind == other.kind && one.size == other.size;
}

} // namespace

void ChangeListModel::setRows(std::vector<ChangeRecord> rows) {
    if (rows == m_rows)
        return;
    emit aboutToReplace();
    m_formerCount = count();
    m_changes = listChanges(pathsOf(m_rows), pathsOf(rows));
    for (const auto& [kind, first, length] : m_changes) {
        const auto from = m_shown.begin() + first;
        if (kind == ListChange::Kind::remove) {
            beginRemoveRows({}, first, first + length - 1);
            m_shown.erase(from, from + length);
            endRemoveRows();
        } else {
            beginInsertRows({}, first, first + length - 1);
            const auto added = m_shown.insert(from, static_cast<std::size_t>(length), nullptr);
            std::transform(rows.begin() + first, rows.begin() + first + length, added,
                           [](const ChangeRecord& row) { return &row; });
            endInsertRows();
        }
    }
    const std::vector<ChangeRecord> former = std::exchange(m_rows, std::move(rows));
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const bool differs = !looksLike(*m_shown[row], m_rows[row]);
        m_shown[row] = &m_rows[row];
        if (differs)
            emit dataChanged(index(static_cast<int>(row)), index(static_cast<int>(row)));
    }
    if (m_selectedPath) {
        const auto selected = std::ranges::find(m_rows, *m_selectedPath, &ChangeRecord::path);
        setSelectedRow(selected == m_rows.end() ? -1 : static_cast<int>(selected - m_rows.begin()));
    }
    emit replaced();
}

void ChangeListModel::select(int row) {
    if (row >= 0 && row < count())
        m_selectedPath = m_rows[static_cast<std::size_t>(row)].path;
    else
        m_selectedPath.reset();
    setSelectedRow(m_selectedPath ? row : -1);
}

void ChangeListModel::setSelectedRow(int row) {
    if (std::exchange(m_selectedRow, row) != row)
        emit selectedRowChanged();
}

QString ChangeListModel::pathAt(int row) const {
    return row >= 0 && row < count() ? toQString(m_rows[static_cast<std::size_t>(row)].path) : QString();
}

int ChangeListModel::newPlaceOf(int formerRow) const {
    int place = formerRow;
    for (const auto& [kind, first, length] : m_changes) {
        if (place < first)
            continue;
        place = kind == ListChange::Kind::insert ? place + length : std::max(first, place - length);
    }
    return place;
}

int ChangeListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

QVariant ChangeListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(changeRowContent(*m_shown[static_cast<std::size_t>(index.row())]));
}

QHash<int, QByteArray> ChangeListModel::roleNames() const {
    return {{Qt::UserRole, "content"}};
}

} // namespace tallyglass
