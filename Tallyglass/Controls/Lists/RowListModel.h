// A list of values as a model that keeps a Repeater responsive: it reveals long lists a portion at a time,
// one in each turn of the event loop, and tells only of the rows that differ. Rows have no keys, only
// positions.
//
// Main thread only. In QML: `RowListModel { rows: card.content.failures }`; each row is the role "row".

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QVariantList>

namespace tallyglass {

class RowListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVariantList rows READ rows WRITE setRows NOTIFY rowsChanged)

public:
    static constexpr qsizetype portion = 40; ///< rows that are revealed at once

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] QVariantList rows() const { return m_rows; }
    void setRows(const QVariantList& rows);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void rowsChanged();

private:
    void revealMore();
    void scheduleMore();

    QVariantList m_rows;
    qsizetype m_revealed = 0; ///< how many of the rows are revealed
    bool m_isScheduled = false;
};

} // namespace tallyglass
