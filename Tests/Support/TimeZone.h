// Sets the time zone of the process for the length of a test.

#pragma once

#include "Tests/Support/Variable.h"

#include <ctime>

namespace tallyglass::test {

class TimeZone {
public:
    explicit TimeZone(const char* name) : m_variable(std::in_place, "TZ", name) { tzset(); }
    ~TimeZone() {
        m_variable.reset();
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::optional<Variable> m_variable;
};

} // namespace tallyglass::test
