// The tmutil of a made-up machine, which answers without a child. Thread-safe.

#pragma once

#include "Tallyglass/Models/Internal/FixtureExclusions.h"
#include "Tallyglass/Models/Internal/FixtureFiles.h"
#include "Tallyglass/Models/Internal/FixtureMachine.h"
#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Platform/Date.h"

#include <atomic>
#include <stop_token>
#include <string_view>

namespace tallyglass {

class FixtureTool {
public:
    /// Requires: there is a machine of this name.
    FixtureTool(std::string_view name, Date now);

    [[nodiscard]] TMUtilResult run(const TMUtilRunner::Arguments& arguments,
                                   const TMUtilRunner::OnBytes& onBytes, const std::stop_token& stop);

    [[nodiscard]] const FixtureMachine& machine() const { return m_machine; }
    [[nodiscard]] const FixtureFiles& files() const { return m_files; }
    /// The present. Where a transfer rate is to be measured, it is earlier until the second reading of the
    /// status, and where comparing takes time, until all neighbours are compared.
    [[nodiscard]] Date now() const;

private:
    [[nodiscard]] TMUtilResult status();
    [[nodiscard]] const FixtureAnswer& comparison(const TMUtilRunner::Arguments& arguments);

    const FixtureMachine m_machine;
    const FixtureFiles m_files;
    const FixtureComparisons m_results;
    const FixtureExclusions m_exclusions;
    const Date m_now;
    std::atomic<int> m_readings = 0;    ///< of the status
    std::atomic<int> m_comparisons = 0; ///< of two backups
};

} // namespace tallyglass
