// A backup by its date, as a screen asks for its changes. A value.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <QMetaType>

namespace tallyglass {

struct TimelinePoint {
    Date date;
    friend bool operator==(const TimelinePoint&, const TimelinePoint&) = default;
};

} // namespace tallyglass

Q_DECLARE_METATYPE(tallyglass::TimelinePoint)
