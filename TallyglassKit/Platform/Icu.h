// What the sources of this folder share about ICU. Include it in sources only: no header of the kit shows
// ICU. Free functions without state; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/UserLocale.h"

#include <unicode/errorcode.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <memory>
#include <string>
#include <string_view>

namespace tallyglass::icutext {

/// An ICU status that becomes an Error when checked. With ICU's data in place none of our calls fails.
class Status : public icu::ErrorCode {
public:
    /// Throws an Error if a call has failed. `purpose` says what for, such as "format a byte count".
    void check(const char* purpose) const;
};

[[nodiscard]] icu::Locale icuLocale(const UserLocale& locale);

[[nodiscard]] std::unique_ptr<icu::TimeZone> icuTimeZone(const UserLocale& locale);

/// Milliseconds since 1970, whole, and kept within what ICU's calendars can count. Requires: not NaN.
[[nodiscard]] UDate icuDate(Date date);

[[nodiscard]] std::string toUtf8(const icu::UnicodeString& text);

/// Ill-formed bytes become U+FFFD.
[[nodiscard]] icu::UnicodeString fromUtf8(std::string_view text);

} // namespace tallyglass::icutext
