// How a run of tmutil can fail, apart from being cancelled. Immutable; any thread may read it.
//
//     try { runner.run({"startbackup"}, stop); }
//     catch (const TMUtilError& error) {
//         if (error.get<TMUtilError::RequiresFullDiskAccess>()) ...
//         show(error.errorDescription());
//     }

#pragma once

#include "TallyglassKit/Platform/Error.h"

#include <cstdint>
#include <cstdio> // stderr is a macro, which every user of the field below must see
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace tallyglass {

class TMUtilError : public Error {
public:
    /// The arguments of the failed command, without the executable.
    using Arguments = std::vector<std::string>;

    struct CommandFailed {
        std::int32_t exitCode = 0;
        std::string stderr; ///< unmodified; only the description is trimmed
        Arguments arguments;
        friend bool operator==(const CommandFailed&, const CommandFailed&) = default;
    };
    struct RequiresFullDiskAccess {
        Arguments arguments;
        friend bool operator==(const RequiresFullDiskAccess&, const RequiresFullDiskAccess&) = default;
    };
    struct MalformedOutput {
        std::string underlying;
        Arguments arguments;
        friend bool operator==(const MalformedOutput&, const MalformedOutput&) = default;
    };
    struct LaunchFailed {
        std::string text;
        friend bool operator==(const LaunchFailed&, const LaunchFailed&) = default;
    };
    using Case = std::variant<CommandFailed, RequiresFullDiskAccess, MalformedOutput, LaunchFailed>;

    explicit TMUtilError(Case value);

    [[nodiscard]] static TMUtilError commandFailed(std::int32_t exitCode, std::string stderrText,
                                                   Arguments arguments);
    [[nodiscard]] static TMUtilError requiresFullDiskAccess(Arguments arguments);
    [[nodiscard]] static TMUtilError malformedOutput(std::string underlying, Arguments arguments);
    [[nodiscard]] static TMUtilError launchFailed(std::string text);

    [[nodiscard]] const Case& value() const { return *m_value; }
    /// The payload of that case, null if this is another one.
    template <typename Payload>
    [[nodiscard]] const Payload* get() const {
        return std::get_if<Payload>(m_value.get());
    }

    friend bool operator==(const TMUtilError& a, const TMUtilError& b) { return a.value() == b.value(); }

private:
    std::shared_ptr<const Case> m_value; // shared, because copying an exception must not throw
};

} // namespace tallyglass
