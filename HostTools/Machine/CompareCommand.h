// `tmutil compare`: its options and operands, and the trees that they refer to.

#pragma once

#include "HostTools/Machine/ComparisonReport.h"
#include "HostTools/Machine/MachinePaths.h"
#include "HostTools/Machine/TreeComparison.h"
#include "TallyglassKit/Platform/Error.h"

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

/// Invalid arguments, with the reason.
class UsageError : public Error {
public:
    using Error::Error;
};

struct CompareArguments {
    ComparisonOptions options;
    bool ignoresExclusions = false;
    bool wantsPropertyList = false;
    std::vector<std::string> operands; ///< none, a backup, or the older and the newer

    /// Parses the arguments after the verb. Throws UsageError.
    [[nodiscard]] static CompareArguments parse(const std::vector<std::string>& arguments);
};

/// A path split by the backup that contains it.
struct BackupLocation {
    std::string root;
    std::string volume;  ///< empty for the root itself
    std::string logical; ///< "/a/b", or empty

    /// Absent for a path outside of the machine's backups. Both names of a backup are recognised.
    [[nodiscard]] static std::optional<BackupLocation> of(const MachinePaths& machine,
                                                          const std::string& path);
};

/// Compares and writes the report to `output`. Throws Error if an operand is invalid.
void compareCommand(const MachinePaths& machine, const CompareArguments& arguments, FILE* output,
                    FILE* warnings);

} // namespace tallyglass
