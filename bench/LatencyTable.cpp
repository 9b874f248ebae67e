#include "LatencyTable.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kestrovan::bench {

namespace {

using Milliseconds = LatencyTable::Milliseconds;

constexpr int nameWidth = 52;
constexpr int figureWidth = 9;

template <class... Values>
std::string format(const char* pattern, Values... values)
{
    std::string text(static_cast<std::size_t>(std::snprintf(nullptr, 0, pattern, values...)), '\0');
    std::snprintf(text.data(), text.size() + 1, pattern, values...);
    return text;
}

// The nearest rank: a value that was measured, never one in between.
Milliseconds percentile(const std::vector<Milliseconds>& sorted, double percent)
{
    const auto rank = static_cast<std::size_t>(std::ceil(percent / 100.0 * static_cast<double>(sorted.size())));
    return sorted[std::max<std::size_t>(rank, 1) - 1];
}

std::string inMilliseconds(Milliseconds duration)
{
    if (duration == Milliseconds::max())
        return "never";
    const double value = duration.count();
    if (value <= 0)
        return "0";
    return format(value < 0.1 ? "%.4f" : value < 10 ? "%.2f" : "%.0f", value);
}

std::string nameOf(double percent)
{
    if (percent == 50)
        return "median";
    return percent == 100 ? "worst" : format("p%g", percent);
}

// Columns are as wide as people see them, not as many bytes.
std::string column(const std::string& text, int width, bool leftAligned = false)
{
    const auto seen =
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned>(byte) & 0xC0U) != 0x80U; });
    const std::string padding(static_cast<std::size_t>(std::max<std::ptrdiff_t>(width - seen, 0)), ' ');
    return leftAligned ? text + padding : padding + text;
}

std::string verdict(const std::string& target, bool isMet)
{
    return target + (isMet ? "" : " MISSED");
}

std::string verdicts(const std::vector<LatencyTable::Target>& targets, const std::vector<Milliseconds>& sorted)
{
    std::string text;
    for (const auto& [percent, limit] : targets)
        text += (text.empty() ? "" : ", ") +
                verdict(nameOf(percent) + " ≤ " + format("%g", limit.count()), percentile(sorted, percent) <= limit);
    return text;
}

} // namespace

LatencyTable::Row& LatencyTable::row(std::string name, std::vector<Target> targets)
{
    return rows_.emplace_back(std::move(name), std::move(targets));
}

void LatencyTable::figure(std::string name, double value, std::string unit, std::optional<double> limit)
{
    figures_.push_back({std::move(name), value, std::move(unit), limit});
}

void LatencyTable::print() const
{
    std::string text = title_ + "\n";
    if (!rows_.empty()) {
        text += "  " + column("milliseconds", nameWidth, true);
        for (const char* heading : {"runs", "median", "p95", "p99", "worst"})
            text += column(heading, figureWidth);
        text += "   target\n";
    }
    for (const auto& row : rows_) {
        text += "  " + column(row.name_, nameWidth, true) + column(std::to_string(row.runs()), figureWidth);
        auto sorted = row.runs_;
        std::ranges::sort(sorted);
        for (const double percent : {50.0, 95.0, 99.0, 100.0})
            text += column(sorted.empty() ? "-" : inMilliseconds(percentile(sorted, percent)), figureWidth);
        text += "   " + (sorted.empty() ? "NOT MEASURED" : verdicts(row.targets_, sorted)) + "\n";
    }
    for (const auto& [name, value, unit, limit] : figures_) {
        text += "  " + column(name, nameWidth, true) + column(format("%.4g", value), figureWidth) + " " + unit;
        text += (limit ? verdict(format("   at most %g ", *limit) + unit, value <= *limit) : "") + "\n";
    }
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

} // namespace kestrovan::bench
