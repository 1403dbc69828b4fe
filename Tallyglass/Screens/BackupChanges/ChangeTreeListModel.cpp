#include "Tallyglass/Screens/BackupChanges/ChangeTreeListModel.h"

#include "Tallyglass/Controls/Lists/ListChanges.h"
#include "Tallyglass/Controls/QtConversions.h"

#include <QCoreApplication>
#include <algorithm>
#include <iterator>

namespace tallyglass {

namespace {

class ChangeTreeList {
    Q_DECLARE_TR_FUNCTIONS(ChangeTreeList)
};

template <typename Row>
std::vector<std::string_view> paths(const std::vector<Row>& rows) {
    std::vector<std::string_view> result(rows.size());
    std::ranges::transform(rows, result.begin(),
                           [](const Row& row) -> std::string_view { return row.change.path; });
    return result;
}

} // namespace

void ChangeTreeListModel::setRows(std::span<const DisplayRow> rows, const ChangeTree& tree) {
    std::vector<Row> after;
    after.reserve(std::min<std::size_t>(rows.size(), rowLimit));
    for (const DisplayRow& row : rows.first(after.capacity())) {
        const std::string* error = tree.folderError(row.change->path);
        after.push_back({*row.change, row.indent, row.isExpandable, row.isExpanded, row.isLoading,
                         error ? *error : std::string()});
    }

    const auto iterator = [this](int row) { return m_rows.begin() + row; };
    for (const ListChange& change : listChanges(paths(m_rows), paths(after))) {
        const int end = change.first + change.count;
        if (change.kind == ListChange::Kind::remove) {
            beginRemoveRows({}, change.first, end - 1);
            m_rows.erase(iterator(change.first), iterator(end));
            endRemoveRows();
        } else {
            beginInsertRows({}, change.first, end - 1);
            m_rows.insert(iterator(change.first), after.begin() + change.first, after.begin() + end);
            endInsertRows();
        }
    }
    for (int row = 0; row < rowCount(); ++row) {
        Row& fresh = after[static_cast<std::size_t>(row)];
        if (fresh == at(row))
            continue;
        *iterator(row) = std::move(fresh);
        emit dataChanged(index(row), index(row));
    }
}

std::optional<int> ChangeTreeListModel::parentOf(int row) const {
    if (row < 0 || row >= rowCount())
        return std::nullopt;
    for (int above = row - 1; above >= 0; --above)
        if (at(above).indent < at(row).indent)
            return above;
    return std::nullopt;
}

std::optional<int> ChangeTreeListModel::firstChildOf(int row) const {
    if (row < 0 || row + 1 >= rowCount() || at(row + 1).indent <= at(row).indent)
        return std::nullopt;
    return row + 1;
}

int ChangeTreeListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ChangeTreeListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = at(index.row());
    ChangeTreeRow shown;
    shown.change = changeRowContent(row.change);
    shown.indent = row.indent;
    shown.isExpandable = row.isExpandable;
    shown.isExpanded = row.isExpanded;
    shown.isLoading = row.isLoading;
    if (row.isExpandable)
        shown.disclosureLabel =
            row.isExpanded ? ChangeTreeList::tr("Collapse folder") : ChangeTreeList::tr("Expand folder");
    shown.error = toQString(row.error);
    return QVariant::fromValue(shown);
}

QHash<int, QByteArray> ChangeTreeListModel::roleNames() const {
    return {{Qt::UserRole, "row"}};
}

} // namespace tallyglass
