#pragma once

#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace kestrovan::bench {

/// What a benchmark measured, printed as a table with what is aimed at beside it. One thread.
///
///     LatencyTable table("The siren");
///     auto& row = table.row("muted -> loud again", {p95(30), worst(450)});
///     for (…)
///         row.add(end - start);
///     table.print();
class LatencyTable {
public:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    /// At most `limit` at this share of the runs: 50 is the median, 100 the worst run.
    struct Target {
        double percent;
        Milliseconds limit;
    };

    class Row {
    public:
        Row(std::string name, std::vector<Target> targets) : name_(std::move(name)), targets_(std::move(targets)) {}

        void add(Milliseconds duration) { runs_.push_back(duration); }
        /// A run that came to no end; it counts as longer than every other, and misses every target.
        void addFailure() { runs_.push_back(Milliseconds::max()); }
        std::size_t runs() const { return runs_.size(); }

    private:
        friend class LatencyTable;
        std::string name_;
        std::vector<Target> targets_;
        std::vector<Milliseconds> runs_;
    };

    explicit LatencyTable(std::string title) : title_(std::move(title)) {}

    /// A new row; it stays where it is as long as the table.
    Row& row(std::string name, std::vector<Target> targets = {});
    /// A row for one figure that is not a duration: "armed and idle, CPU", 0.21, "%", at most 0.5.
    void figure(std::string name, double value, std::string unit, std::optional<double> limit = std::nullopt);

    /// To standard output.
    void print() const;

private:
    struct Figure {
        std::string name;
        double value;
        std::string unit;
        std::optional<double> limit;
    };

    std::string title_;
    std::deque<Row> rows_;
    std::vector<Figure> figures_;
};

inline LatencyTable::Target atMost(double percent, double milliseconds)
{
    return {percent, LatencyTable::Milliseconds(milliseconds)};
}
inline LatencyTable::Target median(double milliseconds)
{
    return atMost(50, milliseconds);
}
inline LatencyTable::Target p95(double milliseconds)
{
    return atMost(95, milliseconds);
}
inline LatencyTable::Target p99(double milliseconds)
{
    return atMost(99, milliseconds);
}
inline LatencyTable::Target worst(double milliseconds)
{
    return atMost(100, milliseconds);
}

} // namespace kestrovan::bench
