// The visible rows of the tree of one backup's changes, at most `rowLimit`. The key of a row is its path.
//
// Main thread only. It keeps copies, so the tree may change or be destroyed. In QML each row is the role
// "row".

#pragma once

#include "Tallyglass/Controls/Lists/ChangeRowContent.h"
#include "Tallyglass/Controls/Lists/DiffedListModel.h"
#include "TallyglassKit/Comparison/ChangeTree.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tallyglass {

/// One row as QML shows it.
struct ChangeTreeRow {
    Q_GADGET
    QML_VALUE_TYPE(changeTreeRow)

    Q_PROPERTY(tallyglass::ChangeRowContent change MEMBER change)
    Q_PROPERTY(int indent MEMBER indent)
    Q_PROPERTY(bool isExpandable MEMBER isExpandable)
    Q_PROPERTY(bool isExpanded MEMBER isExpanded)
    Q_PROPERTY(bool isLoading MEMBER isLoading)
    Q_PROPERTY(QString disclosureLabel MEMBER disclosureLabel)
    Q_PROPERTY(QString error MEMBER error)

public:
    ChangeRowContent change;
    int indent = 0;
    bool isExpandable = false;
    bool isExpanded = false;
    bool isLoading = false;
    QString disclosureLabel; ///< what the button does that opens and closes a folder
    QString error;           ///< why the folder can't be shown; empty if it can
};

class ChangeTreeListModel : public tallyglass::DiffedListModel {
    Q_OBJECT
    QML_ANONYMOUS

public:
    static constexpr int rowLimit = 2'000;

    using DiffedListModel::DiffedListModel;

    /// Shows these rows of `tree`.
    void setRows(std::span<const DisplayRow> rows, const ChangeTree& tree);

    /// The row of the folder in which a row is shown; absent at the top.
    [[nodiscard]] std::optional<int> parentOf(int row) const;
    /// The first row below an open folder; absent if there is none.
    [[nodiscard]] std::optional<int> firstChildOf(int row) const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    struct Row {
        ChangeRecord change;
        int indent;
        bool isExpandable;
        bool isExpanded;
        bool isLoading;
        std::string error;

        friend bool operator==(const Row&, const Row&) = default;
    };

    [[nodiscard]] const Row& at(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    std::vector<Row> m_rows;
};

} // namespace tallyglass
