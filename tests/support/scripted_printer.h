#pragma once
// A printer that prints nothing: it keeps the pages of each job as calls, and answers and fails as
// a test wants.
#include "platform/printer.h"
#include "tests/support/recording_surface.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kvo::testing {

struct PrintedText {
    float x = 0;
    float y = 0;
    std::string text;
    platform::TextSide side = platform::TextSide::left;
    float digitWidth = 0;
    float points = 8;
    platform::Colour colour = platform::black;
    friend bool operator==(const PrintedText&, const PrintedText&) = default;
};

struct PrintedPage {
    platform::Orientation orientation = platform::Orientation::portrait;
    // What was drawn on the page's surface; texts of printAt are in `texts`.
    std::vector<SurfaceOperation> operations;
    std::vector<PrintedText> texts;
    std::vector<platform::PageFrame> frames;  // as they were set
    std::vector<platform::PixelImage> images; // likewise
};

enum class JobState { open, ended, killed, failed };

struct PrintedDocument {
    platform::PrintRequest request;
    std::deque<PrintedPage> pages; // the last one is at hand while the job is open
    JobState state = JobState::open;
};

class ScriptedPrinter : public platform::Printer {
public:
    platform::PrintStart begin(const platform::PrintRequest& request) override;

    // What the question comes to; `failed` is told in `words`.
    platform::Printed answer = platform::Printed::done;
    bool whitePaper = true;
    // The job fails when this page is ended; 0: never.
    int failingPage = 0;
    std::string words = "The printer is on fire.";
    // Runs before every page but the first, where it is set.
    std::function<void()> beforePage;
    // Takes its pages when the document ends, as a printer does, and asks between them.
    bool asksWhilePrinting = false;
    // Of all jobs, in their order.
    std::vector<std::shared_ptr<PrintedDocument>> documents;
};

} // namespace kvo::testing
