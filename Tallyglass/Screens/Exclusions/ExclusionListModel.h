// The watched items that the exclusions screen lists. The key of a row is its path.
//
// Main thread only. In QML each row is the role "status", an exclusionRowContent.

#pragma once

#include "Tallyglass/Controls/Lists/DiffedListModel.h"
#include "Tallyglass/Screens/Exclusions/ExclusionsContent.h"

#include <qqmlintegration.h>

#include <vector>

namespace tallyglass {

class ExclusionListModel : public tallyglass::DiffedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("comes with a view model")

public:
    using DiffedListModel::DiffedListModel;

    void setRows(std::vector<ExclusionRowContent> rows);

    /// The item of this path; without a path if it isn't listed.
    [[nodiscard]] Q_INVOKABLE tallyglass::ExclusionRowContent itemAt(const QString& path) const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    std::vector<ExclusionRowContent> m_rows;
};

} // namespace tallyglass
