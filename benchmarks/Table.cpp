#include "Table.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

bool Table::part(const std::string& name) {
    if (!_only.empty() && std::find(_only.begin(), _only.end(), name) == _only.end())
        return false;
    _part = name;
    _runs = 9;
    return true;
}

static double nanosecondsOf(const std::function<void()>& run) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    run();
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

static double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Table::compare(const std::string& what, const std::string& against, double wanted, double operations,
                    const std::function<void()>& measured, const std::function<void()>& reference) {
    compareTimes(
        what, against, wanted, operations, [&] { return nanosecondsOf(measured); },
        [&] { return nanosecondsOf(reference); });
}

void Table::compareTimes(const std::string& what, const std::string& against, double wanted,
                         double operations, const std::function<double()>& measured,
                         const std::function<double()>& reference) {
    measured(); // fills caches
    reference();
    std::vector<double> own, other, ratios;
    for (int i = 0; i < _runs; ++i) {
        own.push_back(measured());
        other.push_back(reference());
        ratios.push_back(own.back() / other.back());
    }
    add({_part, what, against, wanted, median(ratios), median(own) / operations, median(other) / operations});
}

void Table::report(const std::string& what, double operations, const std::function<void()>& measured) {
    measured();
    std::vector<double> own;
    for (int i = 0; i < _runs; ++i)
        own.push_back(nanosecondsOf(measured));
    add({_part, what, "", 0, 0, median(own) / operations, 0});
}

void Table::add(const Row& row) {
    if (_rows.empty())
        std::printf("%-8s  %-52s  %-40s  %6s  %6s  %12s  %12s\n", "part", "what", "against", "ratio",
                    "wanted", "ns each", "against ns");
    std::printf("%-8s  %-52s  %-40s  ", row.part.c_str(), row.what.c_str(), row.against.c_str());
    if (row.ratio > 0)
        std::printf("%6.2f  ", row.ratio);
    else
        std::printf("%6s  ", "");
    if (row.wanted > 0)
        std::printf("%5.2f%c  ", row.wanted, row.ratio > row.wanted ? '!' : ' ');
    else
        std::printf("%6s  ", "");
    std::printf("%12.1f", row.nanoseconds);
    if (row.ratio > 0)
        std::printf("  %12.1f", row.referenceNanoseconds);
    std::printf("\n");
    std::fflush(stdout);
    _rows.push_back(row);
}

bool Table::finish() const {
    const auto exceeded = std::count_if(
        _rows.begin(), _rows.end(), [](const Row& row) { return row.wanted > 0 && row.ratio > row.wanted; });
    std::printf("%zu rows, %td above what is wanted\n", _rows.size(), exceeded);
    return exceeded == 0;
}

bool Table::writeJson(const std::string& path) const {
    FILE* const file = std::fopen(path.c_str(), "w");
    if (!file)
        return false;
    std::fprintf(file, "[");
    const char* separator = "\n";
    for (const Row& row : _rows) { // names hold nothing that JSON would have to escape
        std::fprintf(file, "%s  {\"part\": \"%s\", \"what\": \"%s\", \"nanoseconds\": %.3f", separator,
                     row.part.c_str(), row.what.c_str(), row.nanoseconds);
        if (row.ratio > 0)
            std::fprintf(file, ", \"against\": \"%s\", \"againstNanoseconds\": %.3f, \"ratio\": %.4f",
                         row.against.c_str(), row.referenceNanoseconds, row.ratio);
        if (row.wanted > 0)
            std::fprintf(file, ", \"wanted\": %.2f", row.wanted);
        std::fprintf(file, "}");
        separator = ",\n";
    }
    std::fprintf(file, "\n]\n");
    return std::fclose(file) == 0;
}
