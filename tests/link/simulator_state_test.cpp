// What the modelled logger keeps while it is off.
#include "tests/contract/temporary_folder.h"
#include "tools/logger_simulator/model_logger.h"
#include "tools/logger_simulator/state_file.h"

#include <gtest/gtest.h>

#include <fstream>

namespace kvo::simulator {
namespace {

void send(ModelLogger& logger, const std::string& bytes) {
    for (const char c : bytes) {
        logger.receive(static_cast<std::uint8_t>(c));
        while (logger.next()) {
        }
    }
}

HeaderBytes counted() {
    HeaderBytes settings{};
    for (std::size_t i = 0; i < settings.size(); ++i) settings[i] = static_cast<std::uint8_t>(i);
    return settings;
}

std::string writeOf(const HeaderBytes& settings) {
    return "S01234567" + std::string(settings.begin(), settings.end());
}

TEST(StateFile, WhatIsWrittenIsThereAtTheNextStart) {
    const testing::TemporaryFolder folder;
    const std::string path = folder / "logger";
    std::string error;
    EXPECT_FALSE(readState(path, error));
    EXPECT_EQ(error, "");

    ModelLogger before(25);
    before.onWritten = [&](const HeaderBytes& settings) {
        EXPECT_TRUE(writeState(path, settings, error)) << error;
    };
    send(before, writeOf(counted()));

    const auto kept = readState(path, error);
    ASSERT_TRUE(kept) << error;
    EXPECT_EQ(*kept, counted());
    ModelLogger after(25);
    after.takeSettings(*kept);
    EXPECT_TRUE(std::equal(kept->begin(), kept->end(), after.stream().begin() + 1));
    EXPECT_TRUE(std::equal(
        after.stream().begin() + 33, after.stream().end(), before.stream().begin() + 33));
}

TEST(StateFile, ALaterWriteTakesThePlaceOfTheEarlier) {
    const testing::TemporaryFolder folder;
    const std::string path = folder / "logger";
    std::string error;
    EXPECT_TRUE(writeState(path, HeaderBytes{}, error));
    EXPECT_TRUE(writeState(path, counted(), error));
    EXPECT_EQ(readState(path, error), counted());
}

TEST(StateFile, AFileOfAnotherLengthIsRefused) {
    const testing::TemporaryFolder folder;
    const std::string path = folder / "logger";
    std::ofstream(path) << "not a logger";
    std::string error;
    EXPECT_FALSE(readState(path, error));
    EXPECT_NE(error.find(path), std::string::npos);
}

TEST(StateFile, AFolderThatIsNotThereIsTold) {
    std::string error;
    EXPECT_FALSE(writeState("/there/is/no/such/folder/logger", counted(), error));
    EXPECT_NE(error, "");
}

TEST(StateFile, AWriteThatBreaksOffKeepsNothing) {
    ModelLogger logger(25);
    int written = 0;
    logger.onWritten = [&](const HeaderBytes&) { ++written; };
    const std::string whole = writeOf(counted());
    send(logger, whole.substr(0, whole.size() - 1));
    EXPECT_EQ(written, 0);
    EXPECT_FALSE(logger.configurationWaits());
    send(logger, whole.substr(whole.size() - 1));
    EXPECT_EQ(written, 1);
}

} // namespace
} // namespace kvo::simulator
