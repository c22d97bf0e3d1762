#pragma once
// The peers of printing: PDF files that a bare cairo program writes from ready cells and points.
#include <optional>
#include <string>
#include <vector>

namespace kvo::bench {

// A cell at its place on a page, points from the left top.
struct PageCell {
    double x = 0;
    double y = 0;
    std::string text;
};
using PageOfCells = std::vector<PageCell>;

// A line on a page, points from the left top, colour 0 to 1.
struct PageCurve {
    std::vector<std::pair<double, double>> points;
    double red = 0;
    double green = 0;
    double blue = 0;
};

// Writes an A4 file of the cells, a page each, upright, in letters of 8 points. False where cairo
// is not on this machine.
bool cairoTable(const std::string& path, const std::vector<PageOfCells>& pages);
// Writes one A4 page of the lines, across, half a point wide. False likewise.
bool cairoCurves(const std::string& path, const std::vector<PageCurve>& curves);

} // namespace kvo::bench
