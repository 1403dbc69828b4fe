// A list of rows as a model for QML that keeps the screen fluent: a long list appears a few dozen rows at a
// time, one portion in each turn of the event loop, and when it changes only the rows that differ are told
// of.
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
    static constexpr qsizetype portion = 40; ///< rows that appear at once

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] QVariantList rows() const { return m_rows; }
    void setRows(const QVariantList& rows);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void rowsChanged();

private:
    void showMore();
    void scheduleMore();

    QVariantList m_rows;
    qsizetype m_shown = 0; ///< how many of the rows have appeared
    bool m_isScheduled = false;
};

} // namespace tallyglass
