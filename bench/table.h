#pragma once
// The one table that the measuring ends with: a job, what it took, what its peer or limit took in
// the same run, the ratio of the two, and whether the ratio keeps its goal.
#include <optional>
#include <string>
#include <vector>

namespace kvo::bench {

// The ratio that a job is to keep, and the one that it had when the goal was set: "-" where nobody
// had measured it then.
struct Goal {
    double limit = 0;
    std::string before;
};

class Table {
public:
    // Seconds of ours and of what it is compared with. Without a goal the ratio is shown only.
    void add(const std::string& job, const std::string& peer, double ours, double theirs,
        const std::optional<Goal>& goal);
    // A figure that is a ratio by itself, such as the part of a core that a job takes.
    void addRatio(
        const std::string& job, const std::string& against, double ratio, const Goal& goal);
    // A demand that holds or not, such as two pictures being the same.
    void addDemand(const std::string& job, const std::string& demand, bool holds);
    // A peer that is not on this machine.
    void skip(const std::string& job, const std::string& why);

    void print() const;
    // How many goals were missed.
    int broken() const { return m_broken; }

private:
    struct Row {
        std::string job;
        std::string peer;
        std::string ours;
        std::string theirs;
        std::string ratio;
        std::string limit;
        std::string before;
        std::string verdict;
    };
    std::string verdictOf(double ratio, double limit);
    std::vector<Row> m_rows;
    int m_broken = 0;
};

// "12.3 us", "4.56 ms", "7.89 s".
std::string timeText(double seconds);

} // namespace kvo::bench
