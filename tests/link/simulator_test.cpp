// The modelled logger answers as the program's partner: every command, a run that looks like one,
// and faults at the byte they were asked for.
#include "tools/logger_simulator/duplex_line.h"
#include "tools/logger_simulator/faults.h"
#include "tools/logger_simulator/model_logger.h"
#include "tools/logger_simulator/options.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace kvo::simulator {
namespace {

std::string answersTo(LineEnd& end, const std::string& requests) {
    std::string all;
    for (const char c : requests) {
        end.receive(static_cast<std::uint8_t>(c));
        while (const auto out = end.next()) {
            all.push_back(static_cast<char>(out->value));
            if (!out->asked) break;
        }
    }
    return all;
}

std::string bytesOf(const platform::Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST(ModelLogger, AnswersTheGreeting) {
    for (const auto& layout : wireLayouts) {
        ModelLogger logger(layout.dataType);
        EXPECT_EQ(answersTo(logger, "Q"), "?");
    }
}

TEST(ModelLogger, GivesItsStreamByteByByteThenFiller) {
    for (const auto& layout : wireLayouts) {
        ModelLogger logger(layout.dataType);
        const auto size = static_cast<std::size_t>(33 + layout.samples * layout.sampleBytes);
        ASSERT_EQ(logger.stream().size(), size);
        EXPECT_EQ(answersTo(logger, std::string(size + 3, 'D')),
            bytesOf(logger.stream()) + "\xFF\xFF\xFF");
        EXPECT_EQ(answersTo(logger, "QD"), std::string("?\0", 2)); // rewound
    }
}

TEST(ModelLogger, TheMemoryHoldsWhatItsCodeSays) {
    for (const auto& layout : wireLayouts) {
        const int bytes = layout.samples * layout.sampleBytes;
        const int limit = layout.memoryCode == 1 ? 32 * 1024 : 60 * 1024;
        EXPECT_LE(bytes, limit) << layout.dataType;
        EXPECT_GT(bytes, limit * 7 / 10);
    }
}

TEST(ModelLogger, TheSameSeedGivesTheSameRun) {
    EXPECT_EQ(ModelLogger(25, 3).stream(), ModelLogger(25, 3).stream());
    EXPECT_NE(ModelLogger(25, 3).stream(), ModelLogger(25, 4).stream());
}

TEST(ModelLogger, ARecordedStreamIsGivenAsItIs) {
    ModelLogger logger(platform::Bytes{1, 32, 3});
    EXPECT_EQ(answersTo(logger, "QDDDD"), std::string("?\x01\x20\x03\xFF"));
}

TEST(ModelLogger, NewSettingsComeBackAfterPowerUp) {
    ModelLogger logger(32);
    const platform::Bytes before = logger.stream();
    std::string settings;
    for (int k = 0; k < 32; ++k) settings.push_back(static_cast<char>(100 + k));
    settings[0] = 32;
    EXPECT_EQ(answersTo(logger, "QS01234567" + settings), "?01234567" + settings);
    EXPECT_TRUE(logger.configurationWaits());
    EXPECT_EQ(logger.stream(), before);
    logger.powerUp();
    EXPECT_FALSE(logger.configurationWaits());
    EXPECT_EQ(answersTo(logger, "Q" + std::string(33, 'D')).substr(2), settings);
    EXPECT_TRUE(std::equal(before.begin() + 33, before.end(), logger.stream().begin() + 33));
}

TEST(ModelLogger, ACommandByteAmongTheSettingsIsASetting) {
    ModelLogger logger(25);
    const std::string settings(32, 'Q');
    EXPECT_EQ(answersTo(logger, "S01234567" + settings).size(), 40U);
    EXPECT_EQ(answersTo(logger, "Q"), "?");
}

TEST(ModelLogger, AWrongOpeningIsNoWrite) {
    ModelLogger logger(25);
    EXPECT_EQ(answersTo(logger, "S013"), "01");
    EXPECT_EQ(answersTo(logger, "Q"), "?");
    EXPECT_FALSE(logger.configurationWaits());
}

TEST(ModelLogger, StreamsFramesUntilToldToStop) {
    for (const auto& layout : wireLayouts) {
        ModelLogger logger(layout.dataType);
        logger.receive('P');
        platform::Bytes frames;
        const auto length = static_cast<std::size_t>(layout.pitFrameBytes);
        for (std::size_t k = 0; k < 3 * length; ++k) {
            const auto out = logger.next();
            ASSERT_TRUE(out);
            EXPECT_FALSE(out->asked);
            frames.push_back(out->value);
        }
        EXPECT_EQ(frames[1], 0); // the counter of each frame
        EXPECT_EQ(frames[length + 1], 1);
        EXPECT_EQ(frames[2 * length + 1], 2);
        const int ticks = frames[2] * 256 + frames[3];
        EXPECT_NEAR(60 / (ticks * 4e-06), 2100, 60); // it idles
        EXPECT_EQ(frames[8] * 256 + frames[9], 0);   // and stands
        if (layout.pitExhaustAt > 0) {
            EXPECT_GT(frames[static_cast<std::size_t>(layout.pitExhaustAt - 1)], 50);
        }
        logger.receive('p');
        EXPECT_FALSE(logger.next());
    }
}

TEST(ModelLogger, AGreetingEndsALiveDisplayThatWasLeftRunning) {
    ModelLogger logger(25);
    logger.receive('P');
    EXPECT_EQ(answersTo(logger, "Q"), "?");
    EXPECT_FALSE(logger.inPitRun());
}

struct RunFacts {
    int launchRow = 0;
    int wideOpenRows = 0;
    int shiftLightRows = 0;
    double topMph = 0;
};

RunFacts factsOf(const std::vector<Moment>& run) {
    RunFacts facts;
    for (std::size_t i = 1; i < run.size(); ++i) {
        const bool released = (run[i - 1].switches & 1) != 0 && (run[i].switches & 1) == 0;
        if (released) facts.launchRow = static_cast<int>(i) + 1;
        if ((run[i].switches & 2) != 0) ++facts.wideOpenRows;
        if ((run[i].switches & 4) != 0) ++facts.shiftLightRows;
        facts.topMph = std::max(facts.topMph, run[i].mph);
    }
    return facts;
}

int gearsIn(const std::vector<Moment>& run, const Vehicle& vehicle) {
    int seen = 0;
    for (const double gear : vehicle.gears)
        seen += std::any_of(run.begin(), run.end(), [&](const Moment& m) {
            return m.outputRpm > 500 && std::abs(m.inputRpm / m.outputRpm - gear) < 1e-9;
        });
    return seen;
}

TEST(RunModel, IsAPassDownTheStrip) {
    for (const auto& layout : wireLayouts) {
        const Vehicle& vehicle = vehicleFor(layout.dataType);
        const auto run = makeRun(vehicle, layout.samples, layout.timeOffset, 1);
        const RunFacts facts = factsOf(run);
        SCOPED_TRACE(layout.dataType);
        EXPECT_EQ(facts.launchRow, layout.timeOffset); // the brake goes at time zero
        EXPECT_EQ(gearsIn(run, vehicle), static_cast<int>(vehicle.gears.size()));
        EXPECT_GT(facts.wideOpenRows, vehicle.finishSeconds * 100);
        EXPECT_NEAR(facts.topMph, vehicle.finishMph, 2);
        if (vehicle.gears.size() > 1) {
            EXPECT_GT(facts.shiftLightRows, 5);
        }
        EXPECT_EQ(run.front().mph, 0);
        EXPECT_EQ(run.back().switches, 0);
        for (const Moment& m : run) {
            EXPECT_LT(m.engineRpm, 1.08 * vehicle.shiftRpm);
            EXPECT_GE(m.engineRpm, 0);
        }
    }
}

TEST(RunModel, TheTyreSlipsMostAtTheLaunch) {
    const Vehicle& vehicle = vehicleFor(25);
    const auto run = makeRun(vehicle, 1213, 80, 1);
    const auto slip = [&](int i) {
        const Moment& m = run[static_cast<std::size_t>(i - 1)];
        const double wheel = m.mph * 1056 / (3.14159265 * vehicle.rearTyreInches);
        return m.outputRpm / vehicle.finalDrive / wheel - 1;
    };
    EXPECT_GT(slip(80 + 30), 0.15);
    EXPECT_LT(slip(80 + 400), 0.08);
    EXPECT_GT(slip(80 + 400), 0.01);
}

TEST(RunModel, ExhaustsRiseToTheFinish) {
    const auto run = makeRun(vehicleFor(25), 1213, 80, 1);
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_LT(run[0].exhaust[c], 100);
        EXPECT_GT(run[80 + 660].exhaust[c], 180);
        EXPECT_LT(run[1212].exhaust[c], run[80 + 660].exhaust[c]);
    }
}

TEST(MemoryImage, Type20NamesTheExhaustOfEachRow) {
    const ModelLogger logger(20);
    for (const int i : {1, 8, 9, 500}) {
        const auto at = static_cast<std::size_t>(33 + (i - 1) * 16);
        EXPECT_EQ(logger.stream()[at + 8] >> 4, i % 8);
    }
}

TEST(MemoryImage, PeriodsAreTicks) {
    EXPECT_EQ(periodTicks(0), 0);
    EXPECT_EQ(periodTicks(9000), 1667);
    EXPECT_EQ(periodTicks(228), 0); // longer than 16 bits
    EXPECT_EQ(periodTicks(229), 65502);
}

TEST(Faults, HaveNames) {
    const std::pair<const char*, Fault::Kind> rows[] = {{"silent", Fault::Kind::silent},
        {"wrong-greeting", Fault::Kind::wrongGreeting}, {"stop-after=7", Fault::Kind::stopAfter},
        {"drop=7", Fault::Kind::drop}, {"garble=7", Fault::Kind::garble},
        {"double=7", Fault::Kind::twice}, {"late=7", Fault::Kind::late},
        {"hangup-at=7", Fault::Kind::hangUpAt}, {"flood", Fault::Kind::flood}};
    for (const auto& [name, kind] : rows) {
        const auto fault = parseFault(name);
        ASSERT_TRUE(fault) << name;
        EXPECT_EQ(fault->kind, kind);
        EXPECT_EQ(fault->n, std::string(name).find('=') == std::string::npos ? 0 : 7);
    }
    for (const char* wrong :
        {"", "none", "drop", "drop=", "drop=x", "drop=-1", "drop=7x", "silent=1"})
        EXPECT_FALSE(parseFault(wrong)) << wrong;
    EXPECT_EQ(faultNames().size(), 9U);
}

struct FaultTest : ::testing::Test {
    std::string answers(const char* name, const std::string& requests) {
        logger = std::make_unique<ModelLogger>(platform::Bytes{'a', 'b', 'c', 'd', 'e'});
        end = std::make_unique<FaultyEnd>(*logger, *parseFault(name));
        return answersTo(*end, requests);
    }
    std::unique_ptr<ModelLogger> logger;
    std::unique_ptr<FaultyEnd> end;
};

TEST_F(FaultTest, EachAtItsByte) {
    EXPECT_EQ(answers("silent", "QDD"), "");
    EXPECT_EQ(answers("wrong-greeting", "QDD"), "!ab");
    EXPECT_EQ(answers("stop-after=2", "QDDD"), "?a");
    EXPECT_EQ(answers("drop=3", "QDDDD"), "?acd");
    EXPECT_EQ(answers("double=2", "QDD"), "?aab");
    EXPECT_EQ(answers("garble=2", "QDD"), std::string("?") + static_cast<char>(~'a') + "b");
    EXPECT_EQ(answers("hangup-at=2", "QDDD"), "?a");
    EXPECT_TRUE(end->hungUp());
    EXPECT_EQ(answers("late=30", "QDD"), "?ab");
    EXPECT_EQ(end->lateMs(), 30);
}

TEST_F(FaultTest, AFloodNeverEnds) {
    answers("flood", "");
    EXPECT_FALSE(end->next());
    end->receive('Q');
    for (int k = 0; k < 10000; ++k) ASSERT_TRUE(end->next());
}

struct LineTest : ::testing::Test {
    ModelLogger logger{platform::Bytes{'a', 'b', 'c', 'd', 'e'}};
};

TEST_F(LineTest, ABatchTakesOneByteTimeMoreThanItsBytes) {
    DuplexLine line(logger, true);
    for (int k = 0; k < 5; ++k) line.send('D', 100);
    line.advance(100 + 6 * byteTimeMs - 0.001);
    EXPECT_EQ(line.takeArrived(), "abcd");
    line.advance(100 + 6 * byteTimeMs + 0.001);
    EXPECT_EQ(line.takeArrived(), "e");
    EXPECT_FALSE(line.nextEventMs());
}

TEST_F(LineTest, AnExchangeTakesTwoByteTimes) {
    DuplexLine line(logger, true);
    line.send('D', 0);
    EXPECT_NEAR(*line.nextEventMs(), byteTimeMs, 1e-9);
    line.advance(byteTimeMs);
    EXPECT_NEAR(*line.nextEventMs(), 2 * byteTimeMs, 1e-9);
}

TEST_F(LineTest, UnpacedAReplyIsThereAtOnce) {
    DuplexLine line(logger, false);
    for (int k = 0; k < 5; ++k) line.send('D', 7);
    line.advance(7);
    EXPECT_EQ(line.takeArrived(), "abcde");
}

TEST_F(LineTest, FramesTakeTheirTimeAlsoWhenUnpaced) {
    ModelLogger live(25);
    DuplexLine line(live, false);
    line.send('P', 0);
    line.advance(100);
    EXPECT_NEAR(static_cast<double>(line.takeArrived().size()), 100 / byteTimeMs, 1);
}

TEST_F(LineTest, LateIsAddedToEveryAnswerAndNotPiledUp) {
    FaultyEnd late(logger, {Fault::Kind::late, 50});
    DuplexLine line(late, true);
    for (int k = 0; k < 5; ++k) line.send('D', 0);
    line.advance(50 + 6 * byteTimeMs + 0.001);
    EXPECT_EQ(line.takeArrived(), "abcde");
}

TEST_F(LineTest, AHangUpComesBehindTheLastByte) {
    FaultyEnd end(logger, {Fault::Kind::hangUpAt, 2});
    DuplexLine line(end, true);
    for (int k = 0; k < 5; ++k) line.send('D', 0);
    line.advance(3 * byteTimeMs - 0.001);
    EXPECT_FALSE(line.hungUp());
    line.advance(1000);
    EXPECT_EQ(line.takeArrived(), "ab");
    EXPECT_TRUE(line.hungUp());
}

std::optional<Options> typed(const std::vector<std::string>& words, std::string& error) {
    std::ostringstream out;
    std::ostringstream err;
    const auto arguments = command_line::read(syntax(), words, out, err);
    EXPECT_EQ(arguments.exitCode, std::nullopt) << err.str();
    return optionsOf(arguments, error);
}

TEST(Options, AreRead) {
    std::string error;
    const auto options =
        typed({"--type", "43", "--link", "/x/COM1", "--fault", "late=20", "--unpaced", "--seed",
                  "9", "--stream", "recorded", "--state", "kept"},
            error);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->dataType, 43);
    EXPECT_EQ(options->linkPath, "/x/COM1");
    EXPECT_EQ(options->streamPath, "recorded");
    EXPECT_EQ(options->statePath, "kept");
    EXPECT_EQ(options->fault.kind, Fault::Kind::late);
    EXPECT_FALSE(options->paced);
    EXPECT_EQ(options->seed, 9U);
    EXPECT_TRUE(typed({}, error)->paced);
    EXPECT_EQ(error, "");
}

TEST(Options, WrongValuesAreRefusedWithAReason) {
    const std::vector<std::string> rows[] = {{"--type", "9"}, {"--type", "x"}, {"--fault", "sleep"},
        {"--seed", "-1"}, {"--link", ""}, {"--stream", ""}, {"--state", ""}};
    for (const auto& row : rows) {
        std::string error;
        EXPECT_FALSE(typed(row, error)) << row[0];
        EXPECT_EQ(error, row[0] + " cannot be \"" + row[1] + "\"");
    }
}

TEST(Options, TheHelpNamesEveryFault) {
    for (const auto& name : faultNames()) EXPECT_NE(syntax().help.find(name), std::string::npos);
}

} // namespace
} // namespace kvo::simulator
