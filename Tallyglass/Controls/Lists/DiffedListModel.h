// The base of list models that change in place. Each row has a key. Given other rows, the model tells its
// views only of the rows that come, go or differ, never of a reset, so a view keeps its position. The current
// row follows its key, and comes back when its row does.
//
// Main thread only. A derived class keeps its rows in a vector, implements data() and roleNames(), and names
// this base with its namespace, since Qt's QML tools find it by its full name only.

#pragma once

#include "Tallyglass/Controls/Lists/ListChanges.h"

#include <qqmlintegration.h>

#include <QAbstractListModel>
#include <QString>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass {

class DiffedListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("comes with a view model")
    Q_PROPERTY(int count READ count NOTIFY rowsReplaced)
    Q_PROPERTY(int currentRow READ currentRow WRITE setCurrentRow NOTIFY currentRowChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] int currentRow() const { return m_currentRow; } ///< -1 if its key isn't among the rows
    void setCurrentRow(int row);                                  ///< none for a row that doesn't exist
    [[nodiscard]] Q_INVOKABLE QString keyAt(int row) const;       ///< empty for a row that doesn't exist

    /// The new index of the row that was at `formerRow` before the last replacement; if it has gone, of the
    /// next one that stayed, or else of the last row. -1 if there are no rows.
    [[nodiscard]] Q_INVOKABLE int rowAfterReplacement(int formerRow) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;

signals:
    void aboutToReplaceRows(); ///< nothing has changed yet
    void rowsReplaced();       ///< views have been told of all changes
    void currentRowChanged();

protected:
    /// Turns `rows`, which data() reads, into `newRows`; false if they are equal. Rows with equal keys are
    /// the same row. Requires: `rows` are those of the last call; `keyOf` a row gives a const std::string&.
    template <typename Row, typename KeyOf>
    bool replaceRows(std::vector<Row>& rows, std::vector<Row> newRows, KeyOf keyOf) {
        if (rows == newRows)
            return false;
        std::vector<std::string> keys;
        keys.reserve(newRows.size());
        for (const Row& row : newRows)
            keys.push_back(std::invoke(keyOf, row));
        startReplacement(std::move(keys));
        for (const ListChange& change : m_changes) {
            const auto position = rows.begin() + change.first;
            const auto source = newRows.begin() + change.first;
            if (change.kind == ListChange::Kind::remove) {
                beginRemoveRows({}, change.first, change.first + change.count - 1);
                rows.erase(position, position + change.count);
                m_count -= change.count;
                endRemoveRows();
            } else {
                beginInsertRows({}, change.first, change.first + change.count - 1);
                rows.insert(position, source, source + change.count);
                m_count += change.count;
                endInsertRows();
            }
        }
        for (int row = 0; row < m_count; ++row) {
            const auto place = static_cast<std::size_t>(row);
            if (rows[place] == newRows[place])
                continue;
            rows[place] = std::move(newRows[place]);
            emit dataChanged(index(row), index(row));
        }
        finishReplacement();
        return true;
    }

private:
    void startReplacement(std::vector<std::string> keys);
    void finishReplacement();
    void moveCurrentRow(int row);

    std::vector<std::string> m_keys;
    std::vector<ListChange> m_changes; ///< of the last replacement
    int m_count = 0;
    std::optional<std::string> m_currentKey;
    int m_currentRow = -1;
};

} // namespace tallyglass
