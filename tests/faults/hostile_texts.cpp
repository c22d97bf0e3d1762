// Texts that somebody else may have written - titles, notes, times, names of inputs and of files -
// shown, printed and mailed wherever the program does so: as they are, never as a page with markup
// in it, a marked letter, a format or a header line.
//   hostile_texts [--count TEXTS] [--seed N]
#include "core/config.h"
#include "core/forms/doors.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "graph/forms/data_graph.h"
#include "library/mail_files.h"
#include "mainwin/main_window.h"
#include "mainwin/start.h"
#include "platform/qt/application.h"
#include "platform/qt/form_kit.h"
#include "platform/qt/qt_dialogs.h"
#include "tests/faults/proof.h"
#include "tests/forms/support/model_run.h"
#include "tests/forms/support/test_program.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;

namespace {

constexpr std::int64_t shortForm = 12;

std::string everyByte() {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
    return all;
}

// Each of these alone, at the front, in the middle, and doubled.
std::string hostileText(std::int64_t number) {
    static const std::array<std::string, 25> seeds{"<b>x</b>", "<img src=\"/etc/passwd\">",
        "<a href=\"http://x\">y</a>", "<table><tr><td>1", "<br>", "&amp;", "&File", "&&x",
        "%1 %n %s", "%99999d", "\r\nBcc: somebody", "a\nb", "\t\t\t", "\"'`$(x)", "../../x", "CON",
        "\x01\x02\x1b[2J", "\xfe\xff\xfe", "{0}", "<script>1</script>", "]]>", "<!--",
        std::string(2000, 'W'), "#;,|", everyByte()};
    const std::string& seed = seeds[static_cast<std::size_t>(number) % seeds.size()];
    switch (number / static_cast<std::int64_t>(seeds.size()) % 8) {
    case 0:
        return seed;
    case 1:
        return "Final " + seed;
    case 2:
        return seed + " Final";
    case 3:
        return seed + seed;
    case 4:
        return "<i>" + seed;
    case 5:
        return " " + seed + " & ";
    case 6:
        return "%1" + seed;
    default:
        return seed + "\n<b>" + seed;
    }
}

std::string withoutBlanks(std::string text) {
    std::erase_if(
        text, [](char c) { return std::string_view(" \r\n\t").find(c) != std::string::npos; });
    return text;
}

class Gallery : public QObject {
public:
    Gallery(faults::Options options, faults::Proof& proof)
        : m_count(options.count > 0 ? options.count : shortForm), m_proof(proof) {
        connect(&m_timer, &QTimer::timeout, this, [this] { lookAround(); });
        m_timer.start(2);
    }

    int run() {
        for (std::int64_t number = 0; number < m_count; ++number) showAll(number);
        return m_proof.end("hostile texts in every window, on paper and in mails", m_count, "texts",
            std::to_string(m_labels) + " labels and tool tips, " + std::to_string(m_pages) +
                " pages and " + std::to_string(m_mails) + " mails looked at");
    }

private:
    void showAll(std::int64_t number) {
        m_text = hostileText(number);
        testing::TestProgram program;
        QtDialogs dialogs;
        platform::services().dialogs = &dialogs;
        forms::openDoors();
        core::SharedState& state = core::state();
        prepare(program, state);
        platform::services().dialogs = &dialogs;
        form<forms::VrnWin32>().show();
        dialogs.messageBox(m_text, platform::boxStyle::critical, m_text);
        dialogs.inputBox(m_text, m_text, m_text);
        const std::string caption = " Date:Wed 05 Jun 2024 Run: " + m_text;
        forms::doors().showFreshRun(state.Run.path, caption);
        hoverOverTheCurves();
        const auto& names = state.Run.image.setup.AnalogName;
        forms::doors().showStatistics({caption, state.Run.times, names});
        forms::doors().showVisibleOptions(names);
        forms::doors().showInfo(state.Run.path, caption);
        (void)forms::doors().chooseRun("Load", m_text);
        forms::doors().chooseRunsToDelete(m_text);
        forms::doors().copyRuns();
        (void)forms::doors().importRuns(true);
        forms::doors().showSoftwareSetup();
        forms::doors().showTimeGraph(false);
        settle();
        printAll(program);
        mail(program);
        unloadAllForms();
    }

    // The caption on each page is the run's own text.
    void printAll(testing::TestProgram& program) {
        form<forms::DataGraph>().findChild<QAction*>("Mnu_Print(2)")->trigger();
        const bool one = program.printer.documents.size() == 1 &&
                         program.printer.documents[0]->state == testing::JobState::ended;
        if (!m_proof.check(one, "a run of the text " + m_text + " is not printed")) return;
        for (const testing::PrintedPage& page : program.printer.documents[0]->pages) {
            ++m_pages;
            std::string printed; // which a long text makes lines of
            for (const testing::PrintedText& text : page.texts) printed += text.text;
            m_proof.check(withoutBlanks(printed).find(withoutBlanks(m_text)) != std::string::npos,
                "a page without the text " + m_text);
        }
    }

    // The text is in the body as it was typed, and in no other part of the draft.
    void mail(testing::TestProgram& program) {
        library::MailOrder order;
        order.appFolder = "/kvo";
        order.runs = core::readRunIndex(core::indexPath("/kvo", program.files), program.files);
        order.text = m_text;
        const auto sent = library::SendFile(order, program.files, program.mail, {});
        m_proof.check(bool(sent.result) && program.mail.drafts.size() == 1, "not mailed");
        std::string body = sent.draft.body;
        std::erase(body, '\r');
        std::string typed = m_text;
        std::erase(typed, '\r');
        m_proof.check(body.find(typed) != std::string::npos, "a body without " + m_text);
        m_proof.check(sent.draft.subject.find_first_of("\r\n") == std::string::npos &&
                          sent.draft.recipient.find_first_of("\r\n") == std::string::npos,
            "a head of several lines: " + m_text);
        for (const std::string& path : sent.draft.attachments)
            m_proof.check(path.find_first_of("\r\n,\"'<>&% ") == std::string::npos,
                "an attachment named " + path);
        ++m_mails;
    }

    // A folder whose runs, notes, times and setup all say it.
    void prepare(testing::TestProgram& program, core::SharedState& state) {
        for (int number = 1; number <= 2; ++number) {
            testing::listModelRun(state, program.files, 32, number);
            for (int input = 1; input <= 8; ++input)
                state.Run.image.setup.AnalogName[input] = (m_text + "        ").substr(0, 8);
            m_proof.check(bool(core::SaveRun(state.Run, state.AppFolder, program.files)), "save");
            core::RunInfo info;
            info.Info_Text = info.Text_AirTemp = info.Text_60FootTime = m_text;
            info.Text_ET = "7.01";
            for (int line = 1; line <= 25; ++line) info.setup[line] = {m_text, m_text};
            (void)core::SaveRunInfo(state.AppFolder, core::infoFilePath(state.Run.path),
                state.Run.path, info, program.files);
            const core::RunIndexEntry row{
                core::readRunIndex(core::indexPath("/kvo", program.files), program.files)[0]};
            (void)core::describeInIndex("/kvo", row,
                m_text.substr(0, 100) + " Run: " + m_text.substr(0, 20), program.files);
        }
        state.Config = testing::graphConfig(32);
        state.Config.Driver = m_text;
        for (int input = 1; input <= 8; ++input)
            state.Config.AnalogName[input] = (m_text + "        ").substr(0, 8);
        program.putConfig();
    }

    void hoverOverTheCurves() {
        auto& trend = control<QWidget>(form<forms::DataGraph>(), "Trend");
        form<forms::DataGraph>().resize(1000, 700);
        settle();
        for (int y = 20; y < trend.height(); y += 12)
            QTest::mouseMove(&trend, {trend.width() / 2, y});
    }

    void settle() {
        for (int i = 0; i < 4; ++i) {
            QCoreApplication::processEvents();
            lookAround();
        }
    }

    // Whatever stands on the screen is looked at; what waits for an answer is left.
    void lookAround() {
        for (QWidget* widget : QApplication::allWidgets()) {
            if (!widget->isVisible()) continue;
            look(*widget);
        }
        if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
    }

    void look(const QWidget& widget) {
        ++m_labels;
        const auto* label = qobject_cast<const QLabel*>(&widget);
        const bool isTip = widget.inherits("QTipLabel");
        if (label != nullptr && !isTip)
            m_proof.check(label->textFormat() == Qt::PlainText || label->text().isEmpty(),
                "markup counts in the label " + label->objectName().toStdString() + " of " +
                    label->window()->objectName().toStdString());
        // A tip that is a page must be one that was made of plain text.
        const QString tip = widget.toolTip();
        if (Qt::mightBeRichText(tip))
            m_proof.check(!tip.contains(QLatin1String("<b>")) &&
                              !tip.contains(QLatin1String("<i>")) &&
                              !tip.contains(QLatin1String("<img")),
                "markup counts in the tool tip of " + widget.objectName().toStdString());
    }

    std::int64_t m_count;
    std::int64_t m_labels = 0;
    std::int64_t m_pages = 0;
    std::int64_t m_mails = 0;
    std::string m_text;
    QTimer m_timer;
    faults::Proof& m_proof;
};

} // namespace

int main(int argc, char* argv[]) {
    const faults::Options options = faults::optionsOf(argc, argv);
    // Not the program's own application, which would swallow an exception that this looks for.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    prepareApplication(application);
    faults::Proof proof(options);
    return Gallery(options, proof).run();
}
