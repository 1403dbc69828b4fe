// The changed paths that a list shows. Given other rows, it tells its views of the rows that come and go and
// of those that differ; the selected path stays selected, and comes back when its row does.
//
// Main thread only. In QML each row is the role "content", a changeRowContent.

#pragma once

#include "Tallyglass/Controls/Lists/ListChanges.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"

#include <qqmlintegration.h>

#include <QAbstractListModel>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class ChangeListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("comes with a screen's state")
    Q_PROPERTY(int count READ count NOTIFY replaced)
    Q_PROPERTY(int formerCount READ formerCount NOTIFY replaced)
    Q_PROPERTY(int selectedRow READ selectedRow WRITE select NOTIFY selectedRowChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    /// Rows with the same path count as the same row.
    void setRows(std::vector<ChangeRecord> rows);

    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] int formerCount() const { return m_formerCount; } ///< before the last setRows()
    [[nodiscard]] int selectedRow() const { return m_selectedRow; } ///< -1 if its path isn't among the rows
    void select(int row);
    [[nodiscard]] Q_INVOKABLE QString pathAt(int row) const; ///< empty if there is no such row

    /// Where the row went that stood at `formerRow` before the last setRows(), or the next one that stayed if
    /// it has gone; the count of rows if none did. Requires: there was such a row.
    [[nodiscard]] Q_INVOKABLE int newPlaceOf(int formerRow) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void aboutToReplace(); ///< nothing has changed yet
    void replaced();       ///< setRows() changed something, and all of it has been told
    void selectedRowChanged();

private:
    void setSelectedRow(int row);

    std::vector<ChangeRecord> m_rows;
    std::vector<const ChangeRecord*> m_shown; ///< they, or while they change some of the former and the new
    std::vector<ListChange> m_changes;        ///< of the last setRows()
    int m_formerCount = 0;
    std::optional<std::string> m_selectedPath;
    int m_selectedRow = -1;
};

} // namespace tallyglass
