// The backups that a picker offers, under the words for them. The words are made when a row is shown, since
// there can be hundreds.
//
// Main thread only. In QML each row is the role "text".

#pragma once

#include "Tallyglass/Models/DiffModel.h"

#include <qqmlintegration.h>

#include <QAbstractListModel>
#include <vector>

namespace tallyglass {

class BackupChoiceModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("comes with a screen's state")

public:
    using Choices = std::vector<DiffModel::BackupChoice>;

    using QAbstractListModel::QAbstractListModel;

    /// Choices with the same path count as the same. Tells of rows that come and go.
    void setChoices(const Choices& choices);

    /// -1 for a path that isn't among them.
    [[nodiscard]] int indexOf(const std::optional<std::string>& path) const;
    /// Absent unless there is such a row.
    [[nodiscard]] std::optional<std::string> pathAt(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    Choices m_choices;
};

/// The backup's date and time, or the name of its folder if the date isn't known.
[[nodiscard]] QString backupTitle(const DiffModel::BackupChoice& choice);

} // namespace tallyglass
