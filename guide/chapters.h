#pragma once
// The chapters of the user guide, and which of them belongs to which window. The guide is a
// Markdown text; its links name a chapter by an anchor that is made from the heading.
#include <string>
#include <string_view>
#include <vector>

namespace kvo::guide {

struct Chapter {
    int level = 1;      // 1 is the title of the guide
    std::string title;  // as it reads
    std::string anchor; // how a link names it
    bool operator==(const Chapter&) const = default;
};

// The headings of a Markdown text, in its order. What stands in a block of code is none.
std::vector<Chapter> chaptersOf(std::string_view markdown);

// The anchor of a heading: small letters, a dash for each blank, and of all else only digits,
// dashes and underscores.
std::string anchorOf(std::string_view title);

struct WindowChapter {
    const char* window; // its object name, or that of a part of it
    const char* title;  // of the chapter
};

// A row a window, and one for each part of a window that has a chapter of its own.
const std::vector<WindowChapter>& windowChapters();

// The anchor for the place where the user is: the object names of the control that has the focus
// and of all that it lies in, from the inside out. Empty, the beginning of the guide, where none of
// them has a row.
std::string anchorFor(const std::vector<std::string>& names);

} // namespace kvo::guide
