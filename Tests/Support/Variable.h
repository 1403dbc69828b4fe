// Sets an environment variable of the process for the length of a test.

#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tallyglass::test {

class Variable {
public:
    Variable(const char* name, const std::string& value) : m_name(name) {
        if (const char* before = std::getenv(name))
            m_before = before;
        setenv(name, value.c_str(), 1);
    }
    ~Variable() { m_before ? setenv(m_name, m_before->c_str(), 1) : unsetenv(m_name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* const m_name;
    std::optional<std::string> m_before;
};

} // namespace tallyglass::test
