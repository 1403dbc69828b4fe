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
    if (rows.size() < m_revealed) {
        beginRemoveRows({}, position(rows.size()), position(m_revealed - 1));
        m_revealed = rows.size();
        endRemoveRows();
    }
    const QVariantList before = std::exchange(m_rows, rows);
    for (qsizetype i = 0; i < m_revealed; ++i)
        if (m_rows[i] != before[i])
            emit dataChanged(index(position(i)), index(position(i)));
    emit rowsChanged();
    if (m_revealed < std::min(portion, m_rows.size()))
        revealMore();
    else
        scheduleMore();
}

void RowListModel::revealMore() {
    const qsizetype next = std::min(m_rows.size(), m_revealed + portion);
    if (next == m_revealed)
        return;
    beginInsertRows({}, position(m_revealed), position(next - 1));
    m_revealed = next;
    endInsertRows();
    scheduleMore();
}

void RowListModel::scheduleMore() {
    if (m_isScheduled || m_revealed == m_rows.size())
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            revealMore();
        },
        Qt::QueuedConnection);
}

int RowListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : position(m_revealed);
}

QVariant RowListModel::data(const QModelIndex& index, int role) const {
    return role == Qt::UserRole && checkIndex(index, CheckIndexOption::IndexIsValid) ? m_rows[index.row()]
                                                                                     : QVariant();
}

QHash<int, QByteArray> RowListModel::roleNames() const {
    return {{Qt::UserRole, "row"}};
}

} // namespace tallyglass
