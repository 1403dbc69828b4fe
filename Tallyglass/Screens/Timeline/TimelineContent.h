// What the timeline says around its chart: texts, the helper's prompt, the legend and the texts of the
// selected backup. A value that is made anew from the model and what the user chose.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"
#include "Tallyglass/Screens/Timeline/TimelineEntries.h"

#include <QtQml/qqmlregistration.h>

#include <QMetaType>
#include <QString>
#include <QVariantList>
#include <optional>
#include <span>
#include <string_view>

namespace tallyglass {

/// One line of the legend: a bar's colour, a symbol or a dash, and what it stands for.
struct TimelineLegendItem {
    Q_GADGET
    QML_VALUE_TYPE(timelineLegendItem)

    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool isRule MEMBER isRule)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString accessibleName MEMBER accessibleName)

public:
    Theme::Role role = Theme::Role::accent;
    QString symbol;      ///< instead of a bar, or on top of one where colour alone won't do
    bool isRule = false; ///< a dashed line instead
    QString text;
    QString accessibleName;

    friend bool operator==(const TimelineLegendItem&, const TimelineLegendItem&) = default;
};

/// What the sizes need when there are none.
struct TimelineHelperPrompt {
    Q_GADGET
    QML_VALUE_TYPE(timelineHelperPrompt)

    Q_PROPERTY(bool shown MEMBER shown)
    Q_PROPERTY(bool isInstalled MEMBER isInstalled)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString text MEMBER text)

public:
    bool shown = false;
    bool isInstalled = false; ///< the helper, which then only lacks a permission
    QString title;
    QString symbol;
    QString text;

    friend bool operator==(const TimelineHelperPrompt&, const TimelineHelperPrompt&) = default;
};

struct TimelineContent {
    Q_GADGET
    QML_VALUE_TYPE(timelineContent)

    Q_PROPERTY(bool hasChart MEMBER hasChart)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(tallyglass::TimelineHelperPrompt prompt MEMBER prompt)
    Q_PROPERTY(QVariantList legend MEMBER legend)
    Q_PROPERTY(QString date MEMBER date)
    Q_PROPERTY(QString summary MEMBER summary)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString hint MEMBER hint)
    Q_PROPERTY(QString accessibleName MEMBER accessibleName)
    Q_PROPERTY(QString accessibleValue MEMBER accessibleValue)
    Q_PROPERTY(QString accessibleHint MEMBER accessibleHint)
    Q_PROPERTY(QString accessibleDescription READ accessibleDescription)

public:
    bool hasChart = false; ///< else there is too little to chart, and all the rest is empty
    QString caption;
    TimelineHelperPrompt prompt;
    QVariantList legend; ///< of TimelineLegendItem
    QString date;        ///< of the selected backup, empty without one, as the next two
    QString summary;     ///< its value, or that it is the first
    QString detail;      ///< what the manifest knows of it
    QString hint;        ///< what a click does
    QString accessibleName;
    QString accessibleValue;
    QString accessibleHint;

    /// Value and hint: a screen reader of this desktop has one place for both.
    [[nodiscard]] QString accessibleDescription() const;

    friend bool operator==(const TimelineContent&, const TimelineContent&) = default;
};

/// What the content is made from.
struct TimelineCircumstances {
    std::span<const TimelineEntry> entries;
    TimelineMetric metric = TimelineMetric::interval;
    std::optional<std::size_t> selectedIndex = {};
    std::optional<double> medianInterval = {}; ///< seconds
    bool hasManifest = false;
    bool hasFullDiskAccess = false;
    bool helperExists = false;
    bool differentiateWithoutColor = false;
};

[[nodiscard]] TimelineContent timelineContent(const TimelineCircumstances& circumstances);

/// What the user runs to install the helper.
inline constexpr std::string_view helperInstallCommand = "cd ~/Development/Tallyglass && ./setup-helper.sh";

} // namespace tallyglass
