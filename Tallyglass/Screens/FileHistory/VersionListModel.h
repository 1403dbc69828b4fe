// The distinct versions of an item, the newest first. The key of a row is the root of the last backup that
// holds the version.
//
// Main thread only. In QML each row is the role "version", a versionRowContent.

#pragma once

#include "Tallyglass/Controls/Lists/DiffedListModel.h"
#include "Tallyglass/Screens/FileHistory/FileHistoryContent.h"
#include "TallyglassKit/Insight/FileVersion.h"

#include <qqmlintegration.h>

#include <string>
#include <vector>

namespace tallyglass {

class VersionListModel : public tallyglass::DiffedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("comes with a view model")

public:
    using DiffedListModel::DiffedListModel;

    void setSpans(const std::vector<FileVersionSpan>& spans);

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Row {
        std::string root;
        VersionRowContent content;
        friend bool operator==(const Row&, const Row&) = default;
    };

    std::vector<Row> m_rows;
};

} // namespace tallyglass
