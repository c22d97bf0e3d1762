// The wait in the event loop for a port that the loop knows nothing of, over a port that the test
// plays.
#include "platform/qt/port_watch.h"

#include "platform/qt/qt_yield.h"
#include "tests/forms/support/form_test_main.h"

#include <QSignalSpy>
#include <QTimer>

using namespace kvo::platform_qt;

namespace {

class PlayedPort : public kvo::platform::WatchedPort {
public:
    int looks = 0;
    bool something = false;
    bool open = false;

    std::vector<kvo::platform::PortState> portStates() const override { return {}; }
    void setCommPort(int) override {}
    int commPort() const override { return 1; }
    std::string deviceOf(int) const override { return {}; }
    void setSettings(std::string_view) override {}
    void setInputLen(int) override {}
    int inputLen() const override { return 0; }
    void setPortOpen(bool wanted) override {
        open = wanted;
        if (whenOpened) whenOpened(wanted);
    }
    bool portOpen() const override { return open; }
    int inBufferCount() override { return 0; }
    int outBufferCount() override { return 0; }
    void output(std::string_view) override {}
    std::string input() override { return {}; }
    int commEvent() const override { return 0; }
    kvo::platform::PortError openError() const override { return kvo::platform::PortError::none; }
    std::string openErrorText() const override { return {}; }
    std::vector<void*> wakeHandles() const override { return {}; }
    bool takeEvents() override {
        ++looks;
        return std::exchange(something, false);
    }
};

} // namespace

class PortWatchTest : public QObject {
    Q_OBJECT

private slots:
    void wakesTheWaitForWhatHappensWhileThePortIsOpen() {
        PlayedPort port;
        PortWatch watch(port);
        QtYield yield(watch);
        const QSignalSpy activity(&watch, &PortWatch::activity);
        QCOMPARE(yield.turns(6400), 6400);
        QCOMPARE(port.looks, 0); // closed
        port.setPortOpen(true);
        QTimer::singleShot(100, [&port] { port.something = true; });
        QVERIFY(yield.turns(320000) < 320000);
        QCOMPARE(activity.count(), 1);
        QVERIFY(port.looks > 1);
        port.setPortOpen(false);
        const int looks = port.looks;
        QCOMPARE(yield.turns(6400), 6400);
        QCOMPARE(port.looks, looks);
    }

    void mayGoBeforeThePort() {
        PlayedPort port;
        { const PortWatch watch(port); }
        port.setPortOpen(true);
        QTest::qWait(120);
        QCOMPARE(port.looks, 0);
    }
};

KVO_FORM_TEST_MAIN(PortWatchTest)
#include "port_watch_test.moc"
