#include "Tallyglass/Screens/Compare/BackupChoiceModel.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Health/Fmt.h"

#include <algorithm>
#include <string_view>

namespace tallyglass {

bool BackupChoiceModel::setChoices(const Choices& choices) {
    return replaceRows(m_choices, choices, &DiffModel::BackupChoice::path);
}

int BackupChoiceModel::indexOf(const std::optional<std::string>& path) const {
    if (!path)
        return -1;
    const auto choice = std::ranges::find(m_choices, *path, &DiffModel::BackupChoice::path);
    return choice == m_choices.end() ? -1 : static_cast<int>(choice - m_choices.begin());
}

std::optional<std::string> BackupChoiceModel::pathAt(int row) const {
    if (row < 0 || row >= count())
        return std::nullopt;
    return m_choices[static_cast<std::size_t>(row)].path;
}

QVariant BackupChoiceModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return backupTitle(m_choices[static_cast<std::size_t>(index.row())]);
}

QHash<int, QByteArray> BackupChoiceModel::roleNames() const {
    return {{Qt::DisplayRole, "text"}};
}

QString backupTitle(const DiffModel::BackupChoice& choice) {
    if (choice.date)
        return toQString(Fmt::timestamp(*choice.date));
    std::string_view path = choice.path;
    path = path.substr(0, path.find_last_not_of('/') + 1);
    return toQString(path.substr(path.rfind('/') + 1));
}

} // namespace tallyglass
