#include "Tallyglass/Controls/Lists/ChangeListModel.h"

#include "Tallyglass/Controls/Lists/ChangeRowContent.h"

#include <utility>

namespace tallyglass {

void ChangeListModel::setRows(std::vector<ChangeRecord> rows) {
    replaceRows(m_rows, std::move(rows), &ChangeRecord::path);
}

QVariant ChangeListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(changeRowContent(m_rows[static_cast<std::size_t>(index.row())]));
}

QHash<int, QByteArray> ChangeListModel::roleNames() const {
    return {{Qt::UserRole, "change"}};
}

} // namespace tallyglass
