#include "tests/support/scripted_printer.h"

#include <utility>

namespace kvo::testing {

namespace {

using platform::Orientation;
using platform::PrintResult;

class ScriptedJob : public platform::PrintJob {
public:
    ScriptedJob(std::shared_ptr<PrintedDocument> document, const ScriptedPrinter& printer)
        : m_document(std::move(document)), m_whitePaper(printer.whitePaper),
          m_failingPage(printer.failingPage), m_words(printer.words),
          m_beforePage(printer.beforePage), m_asksWhilePrinting(printer.asksWhilePrinting) {
        m_document->pages.push_back({m_document->request.firstPage, {}, {}, {}, {}});
    }
    ~ScriptedJob() override {
        if (m_document->state == JobState::open) ScriptedJob::kill();
    }

    platform::Surface& surface() override { return m_surface; }
    void setFrame(const platform::PageFrame& frame) override {
        m_document->pages.back().frames.push_back(frame);
    }
    void setDigitWidth(float ofHeight) override { m_digitWidth = ofHeight; }
    void printAt(float x, float y, std::string_view text, platform::TextSide side) override {
        m_document->pages.back().texts.push_back({x, y, std::string(text), side, m_digitWidth,
            m_surface.fontSize(), m_surface.foreColor()});
    }
    // A letter of 8 points is one unit wide and high.
    float textWidth(std::string_view text) const override {
        return static_cast<float>(text.size()) * m_surface.fontSize() / 8;
    }
    float lineHeight() const override { return 1; }
    void drawImage(const platform::PixelImage& image) override {
        m_document->pages.back().images.push_back(image);
    }
    int page() const override { return static_cast<int>(m_document->pages.size()); }
    void whilePrinting(std::function<bool(int, int)> goesOn) override {
        m_goesOn = std::move(goesOn);
    }
    bool whitePaper() const override { return m_whitePaper; }

    PrintResult newPage(Orientation orientation) override {
        if (m_beforePage) m_beforePage();
        if (auto ended = endPage(); !ended) return ended;
        m_document->pages.push_back({orientation, {}, {}, {}, {}});
        return {};
    }
    PrintResult endDoc() override {
        if (auto ended = endPage(); !ended) return ended;
        for (int done = 1; m_asksWhilePrinting && m_goesOn && done < page(); ++done) {
            if (m_goesOn(done, page())) continue;
            m_document->state = JobState::failed;
            return {platform::Printed::cancelled, {}};
        }
        m_document->state = JobState::ended;
        return {};
    }
    void kill() override {
        takeOperations();
        m_document->state = JobState::killed;
    }

private:
    void takeOperations() {
        m_document->pages.back().operations = m_surface.operations();
        m_surface.forget();
    }
    PrintResult endPage() {
        if (m_document->state == JobState::open) {
            takeOperations();
            if (m_failingPage == page()) m_document->state = JobState::failed;
        }
        if (m_document->state == JobState::open) return {};
        return {platform::Printed::failed, m_words};
    }

    std::shared_ptr<PrintedDocument> m_document;
    RecordingSurface m_surface;
    bool m_whitePaper;
    float m_digitWidth = 0;
    int m_failingPage;
    std::string m_words;
    std::function<void()> m_beforePage;
    bool m_asksWhilePrinting;
    std::function<bool(int, int)> m_goesOn;
};

} // namespace

platform::PrintStart ScriptedPrinter::begin(const platform::PrintRequest& request) {
    if (answer == platform::Printed::cancelled) return {{answer, {}}, nullptr};
    if (answer == platform::Printed::failed) return {{answer, words}, nullptr};
    auto document = std::make_shared<PrintedDocument>();
    document->request = request;
    documents.push_back(document);
    return {{}, std::make_unique<ScriptedJob>(std::move(document), *this)};
}

} // namespace kvo::testing
