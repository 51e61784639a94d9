#pragma once

#include <functional>
#include <string>
#include <vector>

/// The benchmark's table: every row a ratio of two things measured side by side in one run, because machines
/// are noisy and no two are alike.
class Table {
public:
    /// @param only names of the parts to run; all if empty.
    explicit Table(std::vector<std::string> only) : _only(std::move(only)) {}

    /// Begins a part; false if it is not to be run.
    bool part(const std::string& name);
    /// How often each side of a row runs; more for what is over quickly.
    void setRuns(int runs) { _runs = runs; }

    /// Measures a row: both sides by turns, and the median of the ratios.
    /// @param wanted the ratio not to be exceeded, 0 where none is asked for. @param operations in one call.
    void compare(const std::string& what, const std::string& against, double wanted, double operations,
                 const std::function<void()>& measured, const std::function<void()>& reference);
    /// The same with functions that measure themselves and return nanoseconds.
    void compareTimes(const std::string& what, const std::string& against, double wanted, double operations,
                      const std::function<double()>& measured, const std::function<double()>& reference);
    /// Measures a row that nothing is compared with.
    void report(const std::string& what, double operations, const std::function<void()>& measured);

    /// Prints the closing line; false if a wanted ratio was exceeded.
    bool finish() const;
    /// Writes all rows as JSON; false if that fails.
    bool writeJson(const std::string& path) const;

private:
    struct Row {
        std::string part, what, against;
        double wanted, ratio, nanoseconds, referenceNanoseconds;
    };
    void add(const Row& row);

    std::vector<std::string> _only;
    std::string _part;
    int _runs = 9;
    std::vector<Row> _rows;
};
