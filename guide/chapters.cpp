#include "guide/chapters.h"

#include <algorithm>

namespace kvo::guide {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

std::string anchorOf(std::string_view title) {
    std::string anchor;
    for (const char c : title) {
        if (isLetter(c))
            anchor += static_cast<char>(c | 0x20);
        else if (isDigit(c) || c == '-' || c == '_')
            anchor += c;
        else if (c == ' ')
            anchor += '-';
    }
    return anchor;
}

std::vector<Chapter> chaptersOf(std::string_view markdown) {
    std::vector<Chapter> chapters;
    bool inCode = false;
    while (!markdown.empty()) {
        const std::size_t end = std::min(markdown.find('\n'), markdown.size());
        std::string_view line = markdown.substr(0, end);
        markdown.remove_prefix(std::min(end + 1, markdown.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.starts_with("```")) inCode = !inCode;
        const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
        if (inCode || level == 0 || level > 6 || level == line.size() || line[level] != ' ')
            continue;
        line.remove_prefix(level + 1);
        chapters.push_back({static_cast<int>(level), std::string(line), anchorOf(line)});
    }
    return chapters;
}

const std::vector<WindowChapter>& windowChapters() {
    static const std::vector<WindowChapter> rows{
        {"VrnWin32", "User guide"},
        {"About", "User guide"},
        {"frmSplash", "Setting up"}, // of the password
        {"FolderHeld", "One folder, one program"},
        {"DataGraph", "The graph"},
        {"PrintProgress", "Printing"},
        {"ExportPicture", "Taking a run along"},
        {"LoadFile", "Choosing a run"},
        {"TimeGraph", "The times of the newest runs"},
        {"Statistics", "Statistics"},
        {"Info", "Notes and times of a run"},
        {"Copy", "Copying and mailing runs"},
        {"Browser", "Copying and mailing runs"},
        {"MailText", "Copying and mailing runs"},
        {"Import", "Importing runs"},
        {"DownloadData", "From the cable to the curve"},
        {"PitRun", "Pit run"},
        {"SetupOBC", "The logger's own settings"},
        {"PortSearch", "Ports"},
        {"SetupSoftware", "Setting up"},
        {"Analog_Setup", "Analog inputs"},
        {"Visible_Options", "How the curves look"},
        {"CustomScale", "Zooming"},
        {"CalcForm", "Calculators"},
        {"Conversions", "Calculators"},
        {"HelpWindow", "Using this help"},
    };
    return rows;
}

std::string anchorFor(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        for (const WindowChapter& row : windowChapters())
            if (name == row.window) return anchorOf(row.title);
    }
    return {};
}

} // namespace kvo::guide
