#include "Tallyglass/Screens/FileHistory/VersionListModel.h"

#include <utility>

namespace tallyglass {

void VersionListModel::setSpans(const std::vector<FileVersionSpan>& spans) {
    std::vector<Row> rows;
    rows.reserve(spans.size());
    for (std::size_t index = 0; index < spans.size(); ++index)
        rows.push_back({spans[index].version.backupRoot, versionRowContent(spans, index)});
    replaceRows(m_rows, std::move(rows), &Row::root);
}

QVariant VersionListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(m_rows[static_cast<std::size_t>(index.row())].content);
}

QHash<int, QByteArray> VersionListModel::roleNames() const {
    return {{Qt::UserRole, "version"}};
}

} // namespace tallyglass
