#pragma once
// The panel of channels on a page: names, values and the squares with the channels' colours, as
// text.
#include "core/config_record.h"
#include "platform/printer.h"

#include <string>
#include <vector>

namespace kvo::graph {

// A name with its values, as the panel shows it. Texts are a file's.
struct PanelCell {
    int channel = -1; // -1: one of the track times
    std::string name;
    std::string value;
    std::string overlay; // or the difference to a reference
    bool on = true;
};
struct PanelGroup {
    std::string heading;
    std::vector<PanelCell> cells;
};
struct PanelTexts {
    std::string time;    // of the cursor, or of the stretch that is averaged
    std::string pointer; // text of what lies under the pointer, where it stands beside the time
    std::vector<PanelGroup> groups;
    bool overlay = false;     // whether the overlay's values are shown
    bool differences = false; // whether those to a reference are shown in their place

    bool hasSecond() const { return overlay || differences; }
};

// The page's scale is (0, 0)-(1, 1) while one of these works on it.
class PrintedPanel {
public:
    // Measures the texts in a font in which all of them fit across the page. What is handed in
    // must outlive the object.
    PrintedPanel(platform::PrintJob& job, const PanelTexts& panel, const core::AppConfig& config);
    // In units of the page.
    float height() const;
    // The upper edge is at `top`.
    void print(float top) const;

private:
    // Cells that stand one below the other.
    struct Column {
        const std::string* heading = nullptr; // null below the heading of another column
        std::vector<const PanelCell*> cells;
        float name = 0; // widths
        float value = 0;
        float overlay = 0;
    };
    void makeColumns();
    // Gives the width of all columns with the least room between them.
    float measure();
    float widthOf(const Column& column) const;
    float squareSide() const;
    void printColumn(const Column& column, float x, float top) const;
    void printCell(const Column& column, const PanelCell& cell, float x, float y) const;
    void printSquare(const PanelCell& cell, float x, float y) const;
    void printValue(const PanelCell& cell, const std::string& text, platform::Colour colour,
        float left, float width, float y) const;
    platform::Colour inkOf(platform::Colour colour) const;

    platform::PrintJob& m_job;
    const PanelTexts& m_panel;
    const core::AppConfig& m_config;
    std::vector<Column> m_columns;
    float m_points = 0;
    float m_line = 0; // height of a line
};

} // namespace kvo::graph
