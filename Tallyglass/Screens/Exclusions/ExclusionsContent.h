// What the exclusions screen shows of one watched item, and of a failure. Values.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>
#include <optional>
#include <string>

namespace tallyglass {

class ExclusionsModel;
struct ExclusionStatus;

struct ExclusionRowContent {
    Q_GADGET
    QML_VALUE_TYPE(exclusionRowContent)

    Q_PROPERTY(QString path READ path)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(bool isExcluded MEMBER isExcluded)
    Q_PROPERTY(bool isChanging MEMBER isChanging)
    Q_PROPERTY(bool canToggle MEMBER canToggle)
    Q_PROPERTY(QString reason MEMBER reason)
    Q_PROPERTY(QString toggleText MEMBER toggleText)
    Q_PROPERTY(bool exists MEMBER exists)

public:
    std::string key; ///< the path
    QString symbol;
    Theme::Role role = Theme::Role::secondaryText;
    QString detail;          ///< the explanation, or the change that is under way
    bool isExcluded = false; ///< or will be, when the change has been made
    bool isChanging = false;
    bool canToggle = false;
    QString reason;     ///< why it can't be toggled, in short; may be empty
    QString toggleText; ///< of the menu
    bool exists = false;

    [[nodiscard]] QString path() const;

    friend bool operator==(const ExclusionRowContent&, const ExclusionRowContent&) = default;
};

/// `pendingExclusion` is whether the item will be excluded, while that is being changed.
[[nodiscard]] ExclusionRowContent exclusionRowContent(const ExclusionStatus& status,
                                                      std::optional<bool> pendingExclusion);

/// The last failure with the name of its item; empty without one.
[[nodiscard]] QString exclusionFailure(const ExclusionsModel& model);

} // namespace tallyglass
