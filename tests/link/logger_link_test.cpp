// The exchange with the logger: one byte asks, one byte answers, and what silence leaves behind.
#include "link/logger_link.h"

#include "tests/support/scripted_dialogs.h"
#include "tests/support/virtual_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace kvo::link {
namespace {

using namespace platform;
using simulator::Fault;
using simulator::FaultyEnd;
using simulator::ModelLogger;
using testing::ScriptedDialogs;
using testing::VirtualLine;

struct LoggerLinkTest : ::testing::Test {
    void use(platform::Bytes stream, Fault fault = {}, bool paced = false) {
        logger = std::make_unique<ModelLogger>(std::move(stream));
        faulty = std::make_unique<FaultyEnd>(*logger, fault);
        line = std::make_unique<VirtualLine>(*faulty, paced);
        link = std::make_unique<LoggerLink>(*line, *line, dialogs);
    }
    void useAnswers(platform::Bytes answers) {
        const auto count = static_cast<long>(answers.size());
        use(std::move(answers), {Fault::Kind::stopAfter, count});
        line->setPortOpen(true);
        link->CommandByte = command::nextByte;
    }

    ScriptedDialogs dialogs;
    std::unique_ptr<ModelLogger> logger;
    std::unique_ptr<FaultyEnd> faulty;
    std::unique_ptr<VirtualLine> line;
    std::unique_ptr<LoggerLink> link;
};

constexpr const char* openError = "Error Opening Com3\r\rPlease fix and try again!";

TEST_F(LoggerLinkTest, OpensAt9600AndDropsWhatWaited) {
    use({});
    line->plugInto(3);
    line->setOldBytes("stale");
    link->OpenLoggerPort(3);
    EXPECT_TRUE(line->portOpen());
    EXPECT_EQ(line->commPort(), 3);
    EXPECT_EQ(line->settings(), "9600,N,8,1");
    EXPECT_EQ(line->inputLens(), std::vector<int>{0});
    EXPECT_EQ(line->inBufferCount(), 0);
    EXPECT_EQ(link->LinkFailed, 0);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(LoggerLinkTest, NamesThePortAndTheDeviceBehindIt) {
    use({});
    line->plugInto(3);
    EXPECT_EQ(link->portText(3), "Port 3: /dev/virtual");
    EXPECT_EQ(link->portText(2), "Port 2: no device");
}

TEST_F(LoggerLinkTest, APortThatDoesNotOpenIsTold) {
    use({});
    line->failToOpen(3, PortError::other);
    dialogs.expectBox(openError, boxStyle::critical, "Communications Error");
    link->OpenLoggerPort(3);
    EXPECT_EQ(link->LinkFailed, -1);
    EXPECT_FALSE(line->portOpen());
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(LoggerLinkTest, TheReasonStandsBehindTheToldWords) {
    use({});
    line->failToOpen(3, PortError::notPermitted, "/dev/ttyUSB0: join the group dialout");
    dialogs.expectBox(std::string(openError) + "\r\r/dev/ttyUSB0: join the group dialout",
        boxStyle::critical, "Communications Error");
    link->OpenLoggerPort(3);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(LoggerLinkTest, AnOpenPortIsNotOpenedAgain) {
    use({});
    int opens = 0;
    line->onOpen = [&](int) { ++opens; };
    link->OpenLoggerPort(1);
    link->OpenLoggerPort(1);
    EXPECT_EQ(opens, 1);
    EXPECT_EQ(link->LinkFailed, 0);
}

// The form of the logger's settings leaves its port open; the setup may name another one since.
TEST_F(LoggerLinkTest, AnotherPortThatWasLeftOpenIsClosedFirst) {
    use({});
    std::vector<int> opens;
    line->onOpen = [&](int port) { opens.push_back(port); };
    link->OpenLoggerPort(1);
    line->plugInto(3);
    link->OpenLoggerPort(3);
    EXPECT_EQ(opens, (std::vector<int>{1, 3}));
    EXPECT_EQ(line->closings(), 1);
    EXPECT_EQ(line->commPort(), 3);
    EXPECT_TRUE(line->portOpen());
    EXPECT_EQ(link->LinkFailed, 0);
}

TEST_F(LoggerLinkTest, APortThatIsNotThereIsToldThoughAnotherWasOpen) {
    use({});
    link->OpenLoggerPort(1);
    line->failToOpen(2, platform::PortError::missing);
    dialogs.expectBoxTitled("Communications Error");
    link->OpenLoggerPort(2);
    EXPECT_EQ(link->LinkFailed, -1);
    EXPECT_FALSE(line->portOpen());
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(LoggerLinkTest, CommunicationEventsHaveTheirOwnNumbers) {
    const std::pair<int, const char*> told[] = {{1001, "Break Received"}, {1002, "CTS Timeout"},
        {1003, "DSR Timeout"}, {1005, "Overrun Error"}, {1006, "Carrier Detect Timeout"},
        {1007, "Receive Buffer Overflow"}, {1009, "Transmit Buffer Full"}};
    for (const auto& [number, text] : told) EXPECT_EQ(commEventText(number), text);
    for (const int silent : {0, 1, 1000, 1004, 1008, 1010, -1})
        EXPECT_EQ(commEventText(silent), "");
}

TEST_F(LoggerLinkTest, ACommunicationEventIsShownAtOpenAndTheSessionGoesOn) {
    use({});
    line->setCommEvent(1005);
    dialogs.expectBox("Overrun Error", boxStyle::warning, "Communications Error");
    link->OpenLoggerPort(1);
    EXPECT_EQ(link->LinkFailed, 0);
    EXPECT_EQ(dialogs.problems(), "");
}

TEST_F(LoggerLinkTest, ClosingAClosedPortIsSafe) {
    use({});
    link->CloseLoggerPort();
    link->OpenLoggerPort(1);
    link->CloseLoggerPort();
    link->CloseLoggerPort();
    EXPECT_FALSE(line->portOpen());
}

TEST_F(LoggerLinkTest, ARequestBringsItsReply) {
    useAnswers({0x12, 0x34, 0xFF});
    link->RequestByte();
    EXPECT_EQ(link->ReplyByte, 0x12);
    link->RequestByte();
    link->RequestByte();
    EXPECT_EQ(link->ReplyByte, 255);
    EXPECT_EQ(line->everythingSent(), "DDD");
}

TEST_F(LoggerLinkTest, SendCommandSendsTheByteThatStands) {
    useAnswers({});
    link->CommandByte = 'p';
    link->SendCommand(3);
    link->SendCommand(0);
    EXPECT_EQ(line->everythingSent(), "ppp");
    EXPECT_EQ(link->CommandByte, 'p');
}

TEST_F(LoggerLinkTest, AWordIsHighByteFirstAndNeverNegative) {
    useAnswers({0xFF, 0xFE});
    link->RequestWord();
    EXPECT_EQ(link->WordValue, 65534);
}

TEST_F(LoggerLinkTest, SilenceWithoutADataTypeSetsNoFlagAndKeepsTheReply) {
    useAnswers({0x77});
    link->RequestByte();
    const long before = line->turnsGone();
    link->RequestByte();
    EXPECT_EQ(line->turnsGone() - before, 8000);
    EXPECT_EQ(link->LinkFailed, 0);
    EXPECT_EQ(link->ReplyByte, 0x77);
}

TEST_F(LoggerLinkTest, SilenceWithADataTypeSetsTheFlag) {
    useAnswers({});
    link->Header.DataType = 25;
    link->RequestByte();
    EXPECT_EQ(link->LinkFailed, -1);
}

TEST_F(LoggerLinkTest, AReplyWithinTheTurnsIsTaken) {
    for (const long late : {10L, 248L}) {
        use({0x41}, {Fault::Kind::late, late}, true);
        line->setPortOpen(true);
        link->Header.DataType = 8;
        link->CommandByte = command::nextByte;
        link->RequestByte();
        EXPECT_EQ(link->LinkFailed, late < 250 - 2 ? 0 : -1) << late; // two byte times come on top
    }
}

TEST_F(LoggerLinkTest, AQuarterOfASecondIsTheBound) {
    useAnswers({});
    link->Header.DataType = 8;
    link->RequestByte();
    EXPECT_EQ(line->milliseconds(), 250);
    EXPECT_LT(line->yields(), 3); // asleep, not spinning
}

TEST_F(LoggerLinkTest, APortThatIsLostEndsTheWaitAtOnce) {
    useAnswers({});
    link->OpenLoggerPort(1);
    link->Header.DataType = 8;
    line->at(100, [&] { line->vanish(); });
    link->RequestByte();
    EXPECT_EQ(line->turnsGone(), 100);
    EXPECT_EQ(link->LinkFailed, -1);
    link->RequestByte();
    EXPECT_EQ(line->turnsGone(), 100);
}

TEST_F(LoggerLinkTest, APortThatNeverOpenedCostsOneTimeOut) {
    use({});
    line->failToOpen(1, PortError::missing);
    link->tryPort(1);
    link->RequestByte();
    EXPECT_EQ(line->turnsGone(), 8000);
}

TEST_F(LoggerLinkTest, AJammedOutputWaitsUntilThePortIsGone) {
    useAnswers({});
    line->jamOutput(true);
    line->at(50000, [&] { line->vanish(); });
    link->SendCommand(1);
    EXPECT_GE(line->turnsGone(), 50000);
    EXPECT_FALSE(line->portOpen());
}

TEST_F(LoggerLinkTest, ACloseFromInsideTheWaitEndsIt) {
    useAnswers({});
    link->OpenLoggerPort(1);
    line->at(40, [&] {
        link->LinkFailed = -1;
        link->CloseLoggerPort();
    });
    link->RequestByte();
    EXPECT_EQ(line->turnsGone(), 40);
}

TEST_F(LoggerLinkTest, PeriodsBecomeRpm) {
    const struct {
        std::uint8_t high;
        std::uint8_t low;
        std::int16_t rpm;
    } rows[] = {{0, 0, 0}, {0x06, 0x83, 8998}, {0x01, 0xCA, 32751}, {0xFF, 0xFF, 229}};
    for (const auto& row : rows) {
        useAnswers({row.high, row.low});
        link->RpmScale = 1;
        link->RpmValue = 4321;
        link->RequestRpm();
        EXPECT_EQ(link->RpmValue, row.rpm);
    }
}

TEST_F(LoggerLinkTest, AnRpmThatDoesNotFitLeavesTheOneBefore) {
    for (const std::uint8_t count : {std::uint8_t{1}, std::uint8_t{239}}) {
        useAnswers({0, count});
        link->RpmScale = 1;
        link->RpmValue = 4321;
        link->RequestRpm();
        EXPECT_EQ(link->RpmValue, 4321);
    }
    useAnswers({1, 0xC9}); // 457
    link->RpmScale = 1;
    link->RpmValue = 17;
    link->RequestRpm();
    EXPECT_EQ(link->RpmValue, 17);
}

platform::Bytes countingHeader() {
    platform::Bytes stream;
    for (int k = 0; k <= 32; ++k) stream.push_back(static_cast<std::uint8_t>(k));
    return stream;
}

TEST_F(LoggerLinkTest, TheHeaderIsReadInTheOrderOfTheWire) {
    platform::Bytes stream = countingHeader();
    stream[0] = 0xEE; // thrown away
    useAnswers(stream);
    link->ReadLoggerHeader();
    const LoggerHeader& header = link->Header;
    EXPECT_EQ(header.DataType, 1);
    EXPECT_EQ(header.LoggerModel, 2);
    EXPECT_EQ(header.LoggerVersion, 3);
    EXPECT_EQ(header.LoggerMemory, 4);
    EXPECT_EQ(header.RunHeader.EnginePickups, 5);
    EXPECT_EQ(header.RunHeader.InputPickups, 6);
    EXPECT_EQ(header.RunHeader.OutputPickups, 7);
    EXPECT_EQ(header.RunHeader.FrontWheelPickups, 8);
    EXPECT_EQ(header.LoggerSerial, 9 * 256 + 10);
    EXPECT_EQ(header.RunHeader.RecordOnRpm, 5304); // 15e6 / 2828
    EXPECT_EQ(header.RunHeader.CrankGearTeeth, 13);
    EXPECT_EQ(header.RunHeader.BasketGearTeeth, 14);
    EXPECT_EQ(header.RunHeader.PreStartRpm, 3890);
    EXPECT_EQ(header.RunHeader.ShiftLightRpm1, 3432);
    EXPECT_FLOAT_EQ(header.RunHeader.ShiftLightTime1, 48.84F);
    EXPECT_FLOAT_EQ(header.RunHeader.ShiftLightTime4, 79.68F);
    EXPECT_EQ(line->bytesSent(), 33);
    EXPECT_EQ(link->RpmScale, 1.0F);
    EXPECT_EQ(link->CommandByte, 0x44);
}

TEST_F(LoggerLinkTest, ASerialNumberFrom32768UpWraps) {
    platform::Bytes stream(33, 0);
    stream[9] = 0x80;
    stream[10] = 0x01;
    useAnswers(stream);
    link->ReadLoggerHeader();
    EXPECT_EQ(link->Header.LoggerSerial, -32767);
}

TEST_F(LoggerLinkTest, SilenceInTheHeaderFillsItWithTheStaleReply) {
    platform::Bytes answers{0, 25};
    useAnswers(answers);
    link->ReadLoggerHeader();
    EXPECT_EQ(link->Header.DataType, 25);
    EXPECT_EQ(link->Header.LoggerModel, 25);
    EXPECT_EQ(link->Header.LoggerSerial, 25 * 257);
    EXPECT_EQ(link->LinkFailed, -1);
    EXPECT_EQ(line->turnsGone(), 31 * 8000);
}

TEST_F(LoggerLinkTest, OnlyAQuestionMarkIsALogger) {
    use({}, {Fault::Kind::wrongGreeting, 0});
    line->setPortOpen(true);
    EXPECT_FALSE(link->greetLogger());
    use({});
    line->setPortOpen(true);
    EXPECT_TRUE(link->greetLogger());
    EXPECT_EQ(line->everythingSent(), "Q");
}

TEST_F(LoggerLinkTest, NoReplyIsToldInFiveLines) {
    use({});
    link->OpenLoggerPort(1);
    dialogs.expectBox("The On Board Computer has not replied. Possible reasons are:\r\n\r\n"
                      "    (1)..Plug into incorrect IBM Comm Port.\r\n"
                      "    (2)..Download cable not plugged into On Board Computer.\r\n"
                      "    (3)..Download cable not plugged into the IBM Comm Port plug.\r\n"
                      "    (4)..On Board Computer not Swiched on.",
        boxStyle::critical, "Configure Error !");
    link->reportNoReply("Configure Error !");
    EXPECT_EQ(dialogs.beeps(), 1);
    EXPECT_FALSE(line->portOpen());
    EXPECT_EQ(dialogs.problems(), "");
}

} // namespace
} // namespace kvo::link
