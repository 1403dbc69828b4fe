// Sets the time zone of the process for the length of a test.

#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace tallyglass::test {

class TimeZone {
public:
    explicit TimeZone(const char* name) {
        if (const char* before = std::getenv("TZ"))
            m_before = before;
        setenv("TZ", name, 1);
        tzset();
    }
    ~TimeZone() {
        m_before ? setenv("TZ", m_before->c_str(), 1) : unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::optional<std::string> m_before;
};

} // namespace tallyglass::test
