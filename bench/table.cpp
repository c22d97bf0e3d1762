#include "bench/table.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace kvo::bench {
namespace {

std::string number(const char* picture, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), picture, value);
    return text.data();
}

} // namespace

std::string timeText(double seconds) {
    if (seconds < 1e-3) return number("%.1f us", seconds * 1e6);
    if (seconds < 1) return number("%.2f ms", seconds * 1e3);
    return number("%.2f s", seconds);
}

std::string Table::verdictOf(double ratio, double limit) {
    const bool kept = ratio <= limit;
    if (!kept) ++m_broken;
    return kept ? "kept" : "MISSED";
}

void Table::add(const std::string& job, const std::string& peer, double ours, double theirs,
    const std::optional<Goal>& goal) {
    const double ratio = ours / theirs;
    m_rows.push_back({job, peer, timeText(ours), timeText(theirs), number("%.3f", ratio),
        goal ? number("%.2f", goal->limit) : "-", goal ? goal->before : "-",
        goal ? verdictOf(ratio, goal->limit) : "shown only"});
}

void Table::addRatio(
    const std::string& job, const std::string& against, double ratio, const Goal& goal) {
    m_rows.push_back({job, against, "", "", number("%.3f", ratio), number("%.2f", goal.limit),
        goal.before, verdictOf(ratio, goal.limit)});
}

void Table::addDemand(const std::string& job, const std::string& demand, bool holds) {
    if (!holds) ++m_broken;
    m_rows.push_back({job, demand, "", "", "", "", "", holds ? "kept" : "MISSED"});
}

void Table::skip(const std::string& job, const std::string& why) {
    m_rows.push_back({job, why, "", "", "", "", "", "skipped"});
}

void Table::print() const {
    const Row head{"Job", "Against", "Ours", "Theirs", "Ratio", "Goal", "Before", ""};
    const auto widest = [&](std::string Row::*cell) {
        std::size_t width = (head.*cell).size();
        for (const Row& row : m_rows) width = std::max(width, (row.*cell).size());
        return static_cast<int>(width);
    };
    const int job = widest(&Row::job);
    const int peer = widest(&Row::peer);
    const auto line = [&](const Row& row) {
        std::printf("%-*s  %-*s  %10s  %10s  %7s  %6s  %6s  %s\n", job, row.job.c_str(), peer,
            row.peer.c_str(), row.ours.c_str(), row.theirs.c_str(), row.ratio.c_str(),
            row.limit.c_str(), row.before.c_str(), row.verdict.c_str());
    };
    line(head);
    for (const Row& row : m_rows) line(row);
    std::printf("%d goals missed\n", m_broken);
}

} // namespace kvo::bench
