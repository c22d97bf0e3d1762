// PortSearch: the window over the search for the logger's port.
#include "link/forms/logger_line.h"
#include "link/forms/port_search.h"
#include "platform/qt/form_kit.h"
#include "tests/forms/support/form_test_main.h"
#include "tests/forms/support/test_program.h"
#include "tests/forms/support/user_click.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/model_logger.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <memory>

using namespace kvo;
using namespace kvo::platform_qt;
using namespace kvo::testing;
using kvo::forms::PortSearch;
using kvo::platform::Reply;

namespace {

constexpr long turnsAPort = 8000; // of silence

struct Line {
    explicit Line(ScriptedDialogs& dialogs) : link(line, line, dialogs) {
        forms::useLoggerLink(&link);
        line.onOpen = [this](int port) { opened.push_back(port); };
    }
    ~Line() { forms::useLoggerLink(nullptr); }
    simulator::ModelLogger logger{25};
    VirtualLine line{logger};
    link::LoggerLink link;
    std::vector<int> opened;
};

} // namespace

class PortSearchTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TestProgram> m_program;
    std::unique_ptr<Line> m_line;

    VirtualLine& line() { return m_line->line; }
    void expectStart() {
        m_program->dialogs.expectBoxTitled("Find Logger Comm Port !", Reply::yes);
    }

private slots:
    void init() {
        m_program = std::make_unique<TestProgram>();
        m_line = std::make_unique<Line>(m_program->dialogs);
    }
    void cleanup() {
        const std::string problems = m_program->dialogs.problems();
        m_line.reset();
        m_program.reset();
        QVERIFY2(problems.empty(), problems.c_str());
    }

    void showsThePortAndHowFarItIsAndGivesThePortThatWasTaken() {
        line().plugInto(5);
        PortSearch window;
        expectStart();
        m_program->dialogs.expectBoxTitled("Logger Found on Comm Port: 5", Reply::yes);
        line().at(3 * turnsAPort + 10, [&] {
            QVERIFY(window.isVisible());
            QCOMPARE(QApplication::activeModalWidget(), &window);
            QVERIFY(control<QLabel>(window, "Label_Port").text().contains("Port 4: no device"));
            QCOMPARE(control<QProgressBar>(window, "ProgressBar1").value(), 4);
        });
        QCOMPARE(window.search(), std::optional(5));
        QVERIFY(!window.isVisible());
        QVERIFY(!line().portOpen());
    }

    void isNotThereBeforeTheUserSaysYes() {
        PortSearch window;
        m_program->dialogs.expectBoxTitled("Find Logger Comm Port !", Reply::no).whileShown = [&] {
            QVERIFY(!window.isVisible());
        };
        QCOMPARE(window.search(), std::optional<int>());
        QVERIFY(m_line->opened.empty());
    }

    void goesBeforeTheLastWord() {
        line().plugInto(99);
        PortSearch window;
        expectStart();
        m_program->dialogs.expectBoxTitled("CANT FIND THE LOGGER").whileShown = [&] {
            QVERIFY(!window.isVisible());
        };
        QCOMPARE(window.search(), std::optional<int>());
        QCOMPARE(m_line->opened.size(), std::size_t(16));
    }

    void cancelEndsItBeforeTheNextPort_data() {
        QTest::addColumn<int>("way");
        QTest::newRow("the button") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("the window's own button") << 2;
    }
    void cancelEndsItBeforeTheNextPort() {
        QFETCH(int, way);
        line().plugInto(99);
        PortSearch window;
        expectStart();
        line().at(2 * turnsAPort + 10, [&] {
            if (way == 0)
                QCOMPARE(userClick(&control<QPushButton>(window, "Cancel_Command")), QString());
            if (way == 1) QTest::keyClick(&window, Qt::Key_Escape);
            if (way == 2) window.close();
            QVERIFY(!control<QPushButton>(window, "Cancel_Command").isEnabled());
        });
        QCOMPARE(window.search(), std::optional<int>());
        QCOMPARE(m_line->opened, std::vector<int>({1, 2, 3}));
        QVERIFY(!line().portOpen());
        QVERIFY(!window.isVisible());
        QVERIFY(!m_program->dialogs.hourglass());
    }

    // A download that found no configuration has its port open under the setup form.
    void aPortThatASessionHasOpenIsNotTakenForPort1() {
        line().plugInto(3);
        m_line->link.OpenLoggerPort(3);
        m_line->opened.clear();
        PortSearch window;
        expectStart();
        m_program->dialogs.expectBoxTitled("Logger Found on Comm Port: 3", Reply::yes);
        QCOMPARE(window.search(), std::optional(3));
        QCOMPARE(m_line->opened, std::vector<int>({1, 2, 3}));
    }
};

KVO_FORM_TEST_MAIN(PortSearchTest)
#include "port_search_test.moc"
