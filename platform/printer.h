#pragma once
// Paper: a print job is a document of pages, and each page is drawn on like any surface, in a user
// scale. The user is asked once a job where it goes to: a printer, or a PDF file.
#include "platform/draw/surface.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kvo::platform {

// A picture in memory, rows from the top, 0xAARRGGBB a pixel.
struct PixelImage {
    int widthPx = 0;
    int heightPx = 0;
    std::vector<std::uint32_t> pixels;
};

enum class Printed { done, cancelled, failed };

// What became of a step. `message` is for the user, UTF-8, and says why it failed.
struct PrintResult {
    Printed outcome = Printed::done;
    std::string message;
    explicit operator bool() const { return outcome == Printed::done; }
};

enum class Orientation { portrait, landscape };

// Which side of a text stands at the place it is printed at.
enum class TextSide { left, centre, right };

// A part of a page's printable area, which is 0 to 1 in both directions, from its left top.
struct PageFrame {
    float left = 0;
    float top = 0;
    float right = 1;
    float bottom = 1;
    friend bool operator==(const PageFrame&, const PageFrame&) = default;
};

struct PrintRequest {
    std::string documentName; // UTF-8; a PDF file is suggested under it
    Orientation firstPage = Orientation::portrait;
    // Adds the choice "White paper" to the question, on at first: for what has a dark ground on the
    // screen.
    bool offersWhitePaper = false;
};

// A job on its first page. Everything that is set (frame, scale, font, colours, line style) stays
// set on the pages behind. After a failure the job is dead: it takes what is drawn in silence, and
// every step fails with the same words.
class PrintJob {
public:
    // A job that was neither ended nor killed is killed.
    virtual ~PrintJob() = default;

    // The page at hand. Its scale lies over the frame, (0, 0)-(1, 1) at first. Lines are half a
    // point wide for each of the draw width, font sizes are points on the paper, cls() paints the
    // frame in the back colour. What reaches out of the scale is printed up to the paper's edge.
    virtual Surface& surface() = 0;
    // Lays the scale over a part of the printable area. What reaches out of a part is cut at its
    // edge.
    virtual void setFrame(const PageFrame& frame) = 0;
    // How wide a digit is, in parts of the font's height, where columns ask for narrow letters;
    // all letters are narrowed alike, to half of their width at most. 0, as at first: as they are.
    virtual void setDigitWidth(float ofHeight) = 0;
    // Text in the surface's font and fore colour. `x` is where the given side of it stands, `y` its
    // upper edge, in the user scale.
    virtual void printAt(float x, float y, std::string_view text, TextSide side) = 0;
    // In units of the user scale, in the surface's font.
    virtual float textWidth(std::string_view text) const = 0;
    virtual float lineHeight() const = 0;
    // As large as fits in the frame, in the middle of its top.
    virtual void drawImage(const PixelImage& image) = 0;

    // The number of the page, from 1.
    virtual int page() const = 0;
    // A printer gets its pages when the document ends, which may take long: it asks between two of
    // them, and false ends the job as cancelled by the user. Nothing is asked where it is not set.
    virtual void whilePrinting(std::function<bool(int pagesDone, int allPages)> goesOn) = 0;

    // What the user chose; true where it was not asked.
    virtual bool whitePaper() const = 0;

    // Ends the page and goes on with the next one; the current position is (0, 0) there.
    [[nodiscard]] virtual PrintResult newPage(Orientation orientation) = 0;
    // Ends the document: only now is it printed, or its file there. On failure and where the user
    // cancels it meanwhile there is no file, or the one that was there before.
    [[nodiscard]] virtual PrintResult endDoc() = 0;
    // Ends the job without a document.
    virtual void kill() = 0;
};

// A job, or why there is none.
struct PrintStart {
    PrintResult result;
    std::unique_ptr<PrintJob> job; // set where the result is done
};

class Printer {
public:
    virtual ~Printer() = default;
    // Asks for the printer, or for a PDF file where there is none, and opens a job.
    [[nodiscard]] virtual PrintStart begin(const PrintRequest& request) = 0;

    // A document of one page with the picture as large as fits, turned as the picture is, under a
    // heading: a file's text, smaller where it is too long for the page.
    [[nodiscard]] PrintResult printPicture(
        const PixelImage& picture, const std::string& documentName, std::string_view heading = {});
};

} // namespace kvo::platform
