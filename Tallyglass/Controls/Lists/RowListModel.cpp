#include "Tallyglass/Controls/Lists/RowListModel.h"

#include <algorithm>

namespace tallyglass {

namespace {

int position(qsizetype index) {
    return static_cast<int>(index);
}

} // namespace

void RowListModel::setRows(const QVariantList& rows) {
    if (rows == m_rows)
        return;
    if (rows.size() < m_shown) {
        beginRemoveRows({}, position(rows.size()), position(m_shown - 1));
        m_shown = rows.size();
        endRemoveRows();
    }
    const QVariantList before = std::exchange(m_rows, rows);
    for (qsizetype i = 0; i < m_shown; ++i)
        if (m_rows[i] != before[i])
            emit dataChanged(index(position(i)), index(position(i)));
    emit rowsChanged();
    if (m_shown < std::min(portion, m_rows.size()))
        showMore();
    else
        scheduleMore();
}

void RowListModel::showMore() {
    const qsizetype next = std::min(m_rows.size(), m_shown + portion);
    if (next == m_shown)
        return;
    beginInsertRows({}, position(m_shown), position(next - 1));
    m_shown = next;
    endInsertRows();
    scheduleMore();
}

void RowListModel::scheduleMore() {
    if (m_isScheduled || m_shown == m_rows.size())
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            showMore();
        },
        Qt::QueuedConnection);
}

int RowListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : position(m_shown);
}

QVariant RowListModel::data(const QModelIndex& index, int role) const {
    return role == Qt::UserRole && checkIndex(index, CheckIndexOption::IndexIsValid) ? m_rows[index.row()]
                                                                                     : QVariant();
}

QHash<int, QByteArray> RowListModel::roleNames() const {
    return {{Qt::UserRole, "row"}};
}

} // namespace tallyglass
