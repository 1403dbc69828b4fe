// Helpers for ICU that the sources of this folder share. Included by sources only: no header of the kit
// exposes ICU. Any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <unicode/errorcode.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <memory>
#include <string>
#include <string_view>

namespace tallyglass::icutext {

/// An ICU status that becomes an Error when checked. Our calls fail only if ICU's data is missing.
class Status : public icu::ErrorCode {
public:
    /// Throws an Error if a call has failed. `purpose` says what for, such as "format a byte count".
    void check(const char* purpose) const;
};

[[nodiscard]] icu::Locale icuLocale(const UserLocale& locale);

[[nodiscard]] std::unique_ptr<icu::TimeZone> icuTimeZone(const UserLocale& locale);

/// Whole milliseconds since 1970, clamped to the range of ICU's calendars. Requires: not NaN.
[[nodiscard]] UDate icuDate(Date date);

[[nodiscard]] std::string toUtf8(const icu::UnicodeString& text);

/// A cached Format(locale), which is expensive to create: replaced when `locale` changes between calls. Each
/// thread has its own, valid until its next call.
template <typename Format>
[[nodiscard]] const Format& formatFor(const UserLocale& locale) {
    struct Entry {
        explicit Entry(const UserLocale& usedLocale) : locale(usedLocale), format(usedLocale) {}
        const UserLocale locale;
        const Format format;
    };
    thread_local std::unique_ptr<const Entry> latest;
    if (!latest || latest->locale != locale)
        latest = std::make_unique<const Entry>(locale);
    return latest->format;
}

/// Ill-formed bytes become U+FFFD.
[[nodiscard]] icu::UnicodeString fromUtf8(std::string_view text);

} // namespace tallyglass::icutext
