#include "Tallyglass/Screens/Dashboard/ConfigurationCardContent.h"

#include "Tallyglass/Controls/QtConversions.h"
#include "TallyglassKit/Access/TMSettings.h"
#include "TallyglassKit/Health/Fmt.h"

#include <QCoreApplication>

namespace tallyglass {

namespace {

class ConfigurationCard {
    Q_DECLARE_TR_FUNCTIONS(ConfigurationCard)
};

} // namespace

QVariantList ConfigurationCardContent::rowList() const {
    return variants(rows);
}

ConfigurationCardContent configurationCardContent(const std::optional<TMSettings>& optionalSettings,
                                                  const TMDestination* destination, Date now) {
    const TMSettings settings = optionalSettings.value_or(TMSettings());
    ConfigurationCardContent content;
    content.rows = {
        {ConfigurationCard::tr("Automatic backups"),
         settings.autoBackupEnabled ? ConfigurationCard::tr("On") : ConfigurationCard::tr("Off")},
        {ConfigurationCard::tr("Interval"),
         toQString(Fmt::duration(settings.autoBackupInterval, DurationStyle::abbreviated))},
        {ConfigurationCard::tr("Requires AC power"),
         settings.requiresACPower ? ConfigurationCard::tr("Yes") : ConfigurationCard::tr("No")},
    };
    if (destination && destination->consistencyScanDate)
        content.rows.append({ConfigurationCard::tr("Last verification"),
                             toQString(Fmt::relative(destination->consistencyScanDate, now))});
    for (const std::string& path : settings.skipPaths)
        content.skipPaths.append(toQString(path));
    return content;
}

} // namespace tallyglass
