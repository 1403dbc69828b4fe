// One row of the table that ./bench prints: a piece of the program's work measured beside a reference in the
// same run, so that the ratio of the two means the same on a slow or busy machine.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tallyglass::bench {

/// What the ratio of a row says.
enum class Ratio {
    speed,      ///< reference / figure: how many times faster than the reference; at least `must`
    cost,       ///< figure / reference: how much of the reference's cost; at most `must`
    difference, ///< figure - reference, in the row's unit: what comes on top of the reference; at most `must`
};

struct Row {
    std::string name;      ///< as given to ./bench, such as "decode-changes"
    std::string work;      ///< what is measured, in words
    std::string reference; ///< what it is measured against, in words
    std::string unit;      ///< of both figures, such as "s"
    Ratio ratio = Ratio::speed;
    double must = 1;
    double aim = 1;
    int runs = 5; ///< how often each of the two is measured, in turn; the medians count

    /// Makes what both sides need, such as files in a folder of its own; called once, before the first run.
    /// What it returns is kept until after the last.
    std::function<std::shared_ptr<void>()> prepare;
    /// One measurement each, in `unit`. Throwing fails the whole run.
    std::function<double()> measure;
    std::function<double()> measureReference;
};

/// Adds a row to the table. Called before main, from a static initialiser of the file that holds the
/// benchmark.
bool add(Row row);

/// All rows, sorted by name.
[[nodiscard]] std::vector<Row> allRows();

/// Seconds that `work` takes.
[[nodiscard]] double seconds(const std::function<void()>& work);

/// Stops the compiler from dropping the computation of `value`.
template <typename T>
void keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

} // namespace tallyglass::bench
