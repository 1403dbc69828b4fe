// The backups that a picker offers, by title. Titles are made when a row is shown, since there can be
// hundreds. The key of a row is the backup's path.
//
// Main thread only. In QML each row is the role "text".

#pragma once

#include "Tallyglass/Controls/Lists/DiffedListModel.h"
#include "Tallyglass/Models/DiffModel.h"

#include <qqmlintegration.h>

#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

class BackupChoiceModel : public tallyglass::DiffedListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("comes with a view model")

public:
    using Choices = std::vector<DiffModel::BackupChoice>;

    using DiffedListModel::DiffedListModel;

    bool setChoices(const Choices& choices); ///< whether they differ from those before

    /// -1 for a path that isn't among them.
    [[nodiscard]] int indexOf(const std::optional<std::string>& path) const;
    /// Absent unless there is such a row.
    [[nodiscard]] std::optional<std::string> pathAt(int row) const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    Choices m_choices;
};

/// The backup's date and time, or the name of its folder if the date isn't known.
[[nodiscard]] QString backupTitle(const DiffModel::BackupChoice& choice);

} // namespace tallyglass
