#include "Tallyglass/Screens/Exclusions/ExclusionListModel.h"

#include <algorithm>
#include <utility>

namespace tallyglass {

void ExclusionListModel::setRows(std::vector<ExclusionRowContent> rows) {
    replaceRows(m_rows, std::move(rows), &ExclusionRowContent::key);
}

ExclusionRowContent ExclusionListModel::itemAt(const QString& path) const {
    const auto row = std::ranges::find(m_rows, path.toStdString(), &ExclusionRowContent::key);
    return row == m_rows.end() ? ExclusionRowContent() : *row;
}

QVariant ExclusionListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(m_rows[static_cast<std::size_t>(index.row())]);
}

QHash<int, QByteArray> ExclusionListModel::roleNames() const {
    return {{Qt::UserRole, "status"}};
}

} // namespace tallyglass
