// Measures the rows named on the command line, or all of them, prints their table and writes it as JSON.

#include "Benchmarks/Support/Row.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <set>

using namespace tallyglass::bench;

namespace {

double median(std::vector<double> figures) {
    std::ranges::sort(figures);
    const auto middle = figures.size() / 2;
    return figures.size() % 2 ? figures[middle] : (figures[middle - 1] + figures[middle]) / 2;
}

struct Result {
    double figure = 0;
    double reference = 0;
    double ratio = 0;
    bool holds = false;
    bool reachesAim = false;
};

double compare(Ratio ratio, double figure, double reference) {
    switch (ratio) {
    case Ratio::speed:
        return reference / figure;
    case Ratio::cost:
        return figure / reference;
    case Ratio::difference:
        return figure - reference;
    }
    return 0;
}

Result measure(const Row& row) {
    const auto resources = row.prepare ? row.prepare() : nullptr;
    std::vector<double> figures;
    std::vector<double> references;
    for (int run = 0; run < row.runs; ++run) { // in turn, so that a busy moment meets both
        references.push_back(row.measureReference());
        figures.push_back(row.measure());
    }
    Result result{.figure = median(figures), .reference = median(references)};
    result.ratio = compare(row.ratio, result.figure, result.reference);
    const auto reaches = [&](double bound) {
        return row.ratio == Ratio::speed ? result.ratio >= bound : result.ratio <= bound;
    };
    result.holds = reaches(row.must);
    result.reachesAim = reaches(row.aim);
    return result;
}

std::string bound(const Row& row, double value) {
    const char* sign = row.ratio == Ratio::difference ? "+" : "";
    return fmt::format("{}{}{:g}", row.ratio == Ratio::speed ? ">=" : "<=", sign, value);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Measures Tallyglass against references in the same run.");
    std::string jsonFile;
    std::vector<std::string> names;
    app.add_option("--json", jsonFile, "Also write the table to this file as JSON");
    app.add_option("NAME", names, "Rows to measure; all without one");
    CLI11_PARSE(app, argc, argv);

    auto rows = allRows();
    const std::set<std::string> known = [&] {
        std::set<std::string> result;
        for (const Row& row : rows)
            result.insert(row.name);
        return result;
    }();
    for (const std::string& name : names)
        if (!known.contains(name)) {
            std::cerr << fmt::format("There is no benchmark named {}. Known: {}\n", name,
                                     fmt::join(known, ", "));
            return 2;
        }
    if (!names.empty())
        std::erase_if(rows,
                      [&](const Row& row) { return std::ranges::find(names, row.name) == names.end(); });

    fmt::print("{:<22} {:>11} {:>11} {:>7} {:>7} {:>7}  {}\n", "name", "figure", "reference", "ratio", "must",
               "aim", "");
    nlohmann::ordered_json document = nlohmann::ordered_json::array();
    bool allHold = true;
    for (const Row& row : rows) {
        if (isatty(STDERR_FILENO))
            std::cerr << fmt::format("measuring {}: {} against {}\r", row.name, row.work, row.reference);
        Result result;
        try {
            result = measure(row);
        } catch (const std::exception& failure) {
            std::cerr << fmt::format("{} could not be measured: {}\n", row.name, failure.what());
            return 1;
        }
        allHold = allHold && result.holds;
        if (isatty(STDERR_FILENO))
            std::cerr << "\r\033[K";
        fmt::print("{:<22} {:>9.4g} {:<1} {:>9.4g} {:<1} {:>7.3g} {:>7} {:>7}  {}\n", row.name, result.figure,
                   row.unit, result.reference, row.unit, result.ratio, bound(row, row.must),
                   bound(row, row.aim),
                   !result.holds       ? "MISSES"
                   : result.reachesAim ? "holds, reaches the aim"
                                       : "holds");
        std::fflush(stdout);
        document.push_back({{"name", row.name},
                            {"figure", result.figure},
                            {"unit", row.unit},
                            {"reference", result.reference},
                            {"ratio", result.ratio},
                            {"must", row.must},
                            {"aim", row.aim},
                            {"holds", result.holds}});
    }
    if (!jsonFile.empty()) {
        std::ofstream stream(jsonFile);
        stream << document.dump(2) << "\n";
        if (!stream.flush()) {
            std::cerr << fmt::format("The table could not be written to {}\n", jsonFile);
            return 1;
        }
    }
    return allHold ? 0 : 1;
}
