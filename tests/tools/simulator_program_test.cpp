// The program kvo-simulator as somebody runs it who wants it to remember: written to, ended and
// started again. Its path is in KVO_LOGGER_SIMULATOR.
#if defined(__unix__)
#include "link/logger_link.h"
#include "tests/contract/temporary_folder.h"
#include "tests/support/posix_serial_port.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace kvo::simulator {
namespace {

// The program for as long as the object lives; its device is behind `port`.
class RunningSimulator {
public:
    RunningSimulator(const std::string& port, const std::string& state) {
        const char* program = std::getenv("KVO_LOGGER_SIMULATOR");
        if (program == nullptr) return;
        std::vector<std::string> words{
            program, "--type", "25", "--unpaced", "--link", port, "--state", state};
        std::vector<char*> arguments;
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        if (posix_spawn(&m_process, program, nullptr, nullptr, arguments.data(), environ) != 0)
            m_process = 0;
        for (int i = 0; i < 1000 && !std::filesystem::exists(port); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ~RunningSimulator() {
        if (m_process <= 0) return;
        kill(m_process, SIGTERM);
        waitpid(m_process, nullptr, 0);
    }
    RunningSimulator(const RunningSimulator&) = delete;
    RunningSimulator& operator=(const RunningSimulator&) = delete;
    bool runs() const { return m_process > 0; }

private:
    pid_t m_process = 0;
};

// What the program at the other end of `port` says of its logger, as the form of settings asks it.
struct Session {
    explicit Session(const std::string& device) : port(device), link(port, port, dialogs) {
        link.OpenLoggerPort(1);
        answered = link.greetLogger();
    }
    ~Session() { link.CloseLoggerPort(); }
    int recordOnRpm() {
        link.ReadLoggerHeader();
        return link.Header.RunHeader.RecordOnRpm;
    }
    void write(const std::string& settings) {
        link.ReadReply();
        link.CommandByte = link::command::startConfiguration;
        link.SendCommand(1);
        for (const char byte : "01234567" + settings) {
            link.CommandByte = static_cast<std::uint8_t>(byte);
            link.RequestByte();
        }
    }
    testing::ScriptedDialogs dialogs;
    testing::PosixSerialPort port;
    link::LoggerLink link;
    bool answered = false;
};

TEST(SimulatorProgram, RemembersWhatWasWrittenToItOverItsEnd) {
    const testing::TemporaryFolder folder;
    const std::string port = folder / "COM1";
    const std::string state = folder / "logger.state";
    int before = 0;
    {
        const RunningSimulator first(port, state);
        ASSERT_TRUE(first.runs()) << "KVO_LOGGER_SIMULATOR names no program";
        Session session(port);
        ASSERT_TRUE(session.answered);
        before = session.recordOnRpm();
    }
    ASSERT_NE(before, 1500);
    EXPECT_FALSE(std::filesystem::exists(port)) << "the program takes its port away with it";
    {
        const RunningSimulator second(port, state);
        Session session(port);
        ASSERT_TRUE(session.answered);
        std::string settings(32, '\1');
        settings[0] = 25;
        settings[10] = 0x27; // a period of 10000: 1500 rpm
        settings[11] = 0x10;
        session.write(settings);
    }
    const RunningSimulator third(port, state);
    Session session(port);
    ASSERT_TRUE(session.answered);
    EXPECT_EQ(session.recordOnRpm(), 1500);
    EXPECT_EQ(session.link.Header.DataType, 25);
}

} // namespace
} // namespace kvo::simulator
#endif
