// The changed paths that a list shows. The key of a row is its path.
//
// Main thread only. In QML each row is the role "change", a changeRowContent.

#pragma once

#include "Tallyglass/Controls/Lists/DiffedListModel.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"

#include <qqmlintegration.h>

#include <vector>

namespace tallyglass {

class ChangeListModel : public tallyglass::DiffedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("comes with a view model")

public:
    using DiffedListModel::DiffedListModel;

    void setRows(std::vector<ChangeRecord> rows);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    std::vector<ChangeRecord> m_rows;
};

} // namespace tallyglass
