// The order of dotted versions. Any thread.

#pragma once

#include <QStringView>
#include <compare>

namespace tallyglass {

/// Compares runs of digits as numbers of any length and runs of letters as words; a missing number is zero,
/// and a word makes a version older than the same without it: 1.2b3 < 1.2 = 1.2.0 < 1.2.1 < 1.10. What
/// follows a plus doesn't count.
[[nodiscard]] std::weak_ordering compareVersions(QStringView one, QStringView other);

} // namespace tallyglass
