// `tmutil compare`: its options and operands, and which trees they stand for.

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

/// Arguments that make no sense; the text says why.
class UsageError : public Error {
public:
    using Error::Error;
};

struct CompareArguments {
    ComparisonOptions options;
    bool ignoresExclusions = false;
    bool wantsPropertyList = false;
    std::vector<std::string> operands; ///< none, a backup, or the older and the newer

    /// Reads what follows the verb. Throws UsageError.
    [[nodiscard]] static CompareArguments parse(const std::vector<std::string>& arguments);
};

/// A path taken apart by the backup that it lies in.
struct BackupLocation {
    std::string root;
    std::string volume;  ///< empty for the root itself
    std::string logical; ///< "/a/b", or empty

    /// Absent for a path outside every backup of the machine, under whichever of its names.
    [[nodiscard]] static std::optional<BackupLocation> of(const MachinePaths& machine,
                                                          const std::string& path);
};

/// Compares and writes the report to `output`. Throws Error when an operand can't be used.
void compareCommand(const MachinePaths& machine, const CompareArguments& arguments, FILE* output,
                    FILE* warnings);

} // namespace tallyglass
