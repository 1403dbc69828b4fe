// The models of comparisons: how soon the rows of a large one are there, and how much memory loaded rows
// take.

#include "Benchmarks/Comparison/SampleChanges.h"
#include "Benchmarks/Support/Row.h"
#include "Tallyglass/Models/DiffModel.h"
#include "TallyglassKit/Comparison/CacheSession.h"
#include "TallyglassKit/Comparison/ChangeTree.h"
#include "TallyglassKit/Platform/Processes/ChildProcess.h"

#include <fmt/format.h>
#include <malloc.h>

#include <QCoreApplication>
#include <algorithm>
#include <optional>
#include <stdexcept>

namespace tallyglass::bench {
namespace {

// ---- first-rows

/// A model over the cache of a million rows, in a program with an event loop. Its tool is never asked.
struct Million {
    int argc = 1;
    char name[6] = "bench";
    char* argv = name;
    QCoreApplication application{argc, &argv};
    std::shared_ptr<CachedMillion> cache = CachedMillion::shared();
    AppEnvironment environment{SystemPaths("/nowhere")};

    Million() {
        environment.cache = std::make_shared<CacheSession>(environment.runner, cache->file);
        environment.cache->open();
    }
};
Million* million = nullptr; // while its rows are measured

std::shared_ptr<void> makeMillion() {
    auto result = std::make_shared<Million>();
    million = result.get();
    return result;
}

std::unique_ptr<DiffModel> openModel() {
    auto model = std::make_unique<DiffModel>(million->environment);
    model->setFromPath(million->cache->comparison.fromPath);
    model->setToPath(million->cache->comparison.toPath);
    model->setUnlimitedDepth(true);
    model->setCompareExtendedAttributes(true);
    return model;
}

void runToItsEnd(DiffModel& model) {
    model.run(true);
    while (model.progressText())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (std::ssize(model.visibleRows()) != LoadedComparison::rowLimit)
        throw std::runtime_error("rows are missing: " + model.error().value_or(""));
}

double measureFirstRows() {
    const auto model = openModel();
    return seconds([&] { runToItsEnd(*model); });
}

double measureFirstRowsReference() {
    const std::string query =
        fmt::format("SELECT * FROM fileChange WHERE comparisonID = '{}' ORDER BY path LIMIT {};",
                    million->cache->comparison.id, LoadedComparison::rowLimit);
    return seconds([&] {
        const auto result = ChildProcess{
            .executable = "/bin/sh",
            .arguments = {
                "-c", "exec sqlite3 -readonly \"$0\" \"$1\" > /dev/null", million->cache->file.string(),
                query}}.run();
        const auto* exited = std::get_if<ChildProcess::Exited>(&result.end);
        if (!exited || exited->status != 0)
            throw std::runtime_error("sqlite3 failed: " + std::string(result.errors.view()));
    });
}

const bool addsFirstRows = add({
    .name = "first-rows",
    .work = "from the click to the first 20,000 rows of a cached comparison of 1,000,000",
    .reference = "sqlite3 printing the same rows to /dev/null",
    .unit = "s",
    .ratio = Ratio::cost,
    .must = 1.5,
    .aim = 1.0,
    .runs = 9,
    .prepare = makeMillion,
    .measure = measureFirstRows,
    .measureReference = measureFirstRowsReference,
});

// ---- loaded-rows-memory

double allocated() {
    const auto heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

double measureRowMemory() {
    const double before = allocated();
    const auto model = openModel();
    runToItsEnd(*model);
    return allocated() - before;
}

double measureRowMemoryReference() {
    const auto model = openModel();
    runToItsEnd(*model);
    double bytes = 0;
    for (const ChangeRecord& change : model->changes())
        bytes += static_cast<double>(change.path.size());
    return bytes;
}

const bool addsRowMemory = add({
    .name = "loaded-rows-memory",
    .work = "memory that 20,000 loaded rows take",
    .reference = "the bytes of their paths",
    .unit = "bytes",
    .ratio = Ratio::cost,
    .must = 6,
    .aim = 3,
    .runs = 3,
    .prepare = makeMillion,
    .measure = measureRowMemory,
    .measureReference = measureRowMemoryReference,
});

} // namespace
} // namespace tallyglass::bench
