#include "Tallyglass/Screens/Compare/BackupChoiceModel.h"

#include "Tallyglass/Controls/Lists/ListChanges.h"
#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Health/Fmt.h"

#include <algorithm>
#include <string_view>

namespace tallyglass {

namespace {

std::vector<std::string_view> pathsOf(const BackupChoiceModel::Choices& choices) {
    std::vector<std::string_view> paths;
    for (const auto& choice : choices)
        paths.emplace_back(choice.path);
    return paths;
}

} // namespace

void BackupChoiceModel::setChoices(const Choices& choices) {
    if (choices == m_choices)
        return;
    for (const auto& [kind, first, length] : listChanges(pathsOf(m_choices), pathsOf(choices))) {
        const auto from = m_choices.begin() + first;
        if (kind == ListChange::Kind::remove) {
            beginRemoveRows({}, first, first + length - 1);
            m_choices.erase(from, from + length);
            endRemoveRows();
        } else {
            beginInsertRows({}, first, first + length - 1);
            m_choices.insert(from, choices.begin() + first, choices.begin() + first + length);
            endInsertRows();
        }
    }
    const Choices former = std::exchange(m_choices, choices);
    for (std::size_t row = 0; row < choices.size(); ++row)
        if (choices[row] != former[row])
            emit dataChanged(index(static_cast<int>(row)), index(static_cast<int>(row)));
}

int BackupChoiceModel::indexOf(const std::optional<std::string>& path) const {
    if (!path)
        return -1;
    const auto choice = std::ranges::find(m_choices, *path, &DiffModel::BackupChoice::path);
    return choice == m_choices.end() ? -1 : static_cast<int>(choice - m_choices.begin());
}

std::optional<std::string> BackupChoiceModel::pathAt(int row) const {
    if (row < 0 || row >= rowCount())
        return std::nullopt;
    return m_choices[static_cast<std::size_t>(row)].path;
}

int BackupChoiceModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_choices.size());
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
