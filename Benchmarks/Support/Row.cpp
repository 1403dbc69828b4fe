#include "Benchmarks/Support/Row.h"

#include <algorithm>
#include <chrono>

namespace tallyglass::bench {

namespace {

std::vector<Row>& registeredRows() {
    static std::vector<Row> rows;
    return rows;
}

} // namespace

bool add(Row row) {
    registeredRows().push_back(std::move(row));
    return true;
}

std::vector<Row> allRows() {
    auto rows = registeredRows();
    std::ranges::sort(rows, {}, &Row::name);
    return rows;
}

double seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace tallyglass::bench
