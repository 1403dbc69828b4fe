#include "Tallyglass/Screens/BackupChanges/ChangeTreeListModel.h"

#include "Tallyglass/Controls/QtConversions.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace tallyglass {

namespace {

class ChangeTreeList {
    Q_DECLARE_TR_FUNCTIONS(ChangeTreeList)
};

} // namespace

void ChangeTreeListModel::setRows(std::span<const DisplayRow> rows, const ChangeTree& tree) {
    std::vector<Row> after;
    after.reserve(std::min<std::size_t>(rows.size(), rowLimit));
    for (const DisplayRow& row : rows.first(after.capacity())) {
        const std::string* error = tree.folderError(row.change->path);
        after.push_back({*row.change, row.indent, row.isExpandable, row.isExpanded, row.isLoading,
                         error ? *error : std::string()});
    }

    replaceRows(m_rows, std::move(after),
                [](const Row& row) -> const std::string& { return row.change.path; });
}

std::optional<int> ChangeTreeListModel::parentOf(int row) const {
    if (row < 0 || row >= count())
        return std::nullopt;
    for (int above = row - 1; above >= 0; --above)
        if (at(above).indent < at(row).indent)
            return above;
    return std::nullopt;
}

std::optional<int> ChangeTreeListModel::firstChildOf(int row) const {
    if (row < 0 || row + 1 >= count() || at(row + 1).indent <= at(row).indent)
        return std::nullopt;
    return row + 1;
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
