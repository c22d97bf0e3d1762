#include "link/raw_session.h"

#include "core/basic/format.h"
#include "tests/support/memory_files.h"

#include <gtest/gtest.h>

#include <string_view>

namespace kvo::link {
namespace {

std::unique_ptr<RawSession> someSession() {
    auto session = std::make_unique<RawSession>();
    session->moment = {2026, 11, 15, 14, 52, 7};
    session->saved = true;
    session->title = "3 Western Nationals";
    session->DataType = 25;
    session->SampleCount = 1213;
    session->surplus = -2;
    session->Config.Wheel = 25.4F;
    session->Config.Password = "secret";
    session->Config.Text_Magnify.fill(1);
    session->Config.Analog_Type[8] = 2;
    for (std::size_t raw = 0; raw < 256; ++raw)
        session->Tables[8][raw] = 0.5 * static_cast<double>(raw);
    session->start.RpmValue = -7;
    session->start.samples[1].SpeedRaw = 77;
    session->start.samples[2520].Exhaust[8] = 9;
    session->start.periods.OutputPeriod[1360] = 65535;
    session->line.sent = "QDDDDDDSD";
    session->line.came = std::string("?\0\x19", 3);
    session->line.events = {{LineEvent::Kind::arrived, 3, 1, 1},
        {LineEvent::Kind::sentOut, 3, 2, 0}, {LineEvent::Kind::arrived, 66, 3, 1},
        {LineEvent::Kind::arrived, 130, 4, 1}, {LineEvent::Kind::arrived, 70'000, 300, 54},
        {LineEvent::Kind::lost, 80'000, 300, 2}};
    return session;
}

// The file as another program would see to it that its sum is right.
std::string problemOf(const platform::Bytes& file) {
    std::string why;
    EXPECT_EQ(decodeRawSession(file, why), nullptr);
    return why;
}

TEST(RawSession, ComesBackAsItWas) {
    const auto session = someSession();
    std::string why;
    const auto read = decodeRawSession(encodeRawSession(*session), why);
    ASSERT_NE(read, nullptr) << why;
    EXPECT_EQ(core::Format(read->moment, "yyyy-mm-dd"), "2026-11-15");
    EXPECT_EQ(read->moment.second, 7);
    EXPECT_TRUE(read->saved);
    EXPECT_EQ(read->title, session->title);
    EXPECT_EQ(read->DataType, 25);
    EXPECT_EQ(read->SampleCount, 1213);
    EXPECT_EQ(read->surplus, -2);
    EXPECT_EQ(read->Config.Password, "");
    EXPECT_EQ(read->Config.Wheel, 25.4F);
    EXPECT_EQ(read->Tables[8], session->Tables[8]);
    EXPECT_EQ(read->start.RpmValue, -7);
    EXPECT_EQ(read->start.samples, session->start.samples);
    EXPECT_EQ(read->start.periods.OutputPeriod, session->start.periods.OutputPeriod);
    EXPECT_EQ(read->line, session->line);
}

TEST(RawSession, HoldsNoPassword) {
    const platform::Bytes file = encodeRawSession(*someSession());
    const std::string_view all(reinterpret_cast<const char*>(file.data()), file.size());
    EXPECT_EQ(all.find("secret"), std::string_view::npos);
}

TEST(RawSession, EveryCutAndEveryWrongByteIsRefused) {
    const platform::Bytes whole = encodeRawSession(*someSession());
    for (std::size_t length = 0; length < whole.size(); length += length < 100 ? 1 : 97) {
        const platform::Bytes cut(
            whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(problemOf(cut), "") << length;
    }
    for (std::size_t at = 0; at < whole.size(); at += 31) {
        platform::Bytes wrong = whole;
        wrong[at] ^= 0x10U;
        EXPECT_NE(problemOf(wrong), "") << at;
    }
    platform::Bytes longer = whole;
    longer.push_back(0);
    EXPECT_EQ(problemOf(longer), "is damaged: its check sum is wrong");
}

constexpr const char* doesNotFit = "is damaged: its parts do not fit together";

// With a sum that is right: a replay would write the rows behind the last one that a run has.
TEST(RawSession, OfMoreRowsThanItsTypeHasIsRefused) {
    struct Case {
        std::uint8_t type;
        std::uint16_t rows;
        bool possible;
    };
    for (const auto& [type, rows, possible] : {Case{25, 1213, true}, Case{25, 1, true},
             Case{8, 2520, true}, Case{25, 1214, false}, Case{25, 65535, false}, Case{25, 0, false},
             Case{8, 2521, false}, Case{23, 1, false}, Case{0, 1, false}}) {
        const auto session = someSession();
        session->DataType = type;
        session->SampleCount = rows;
        std::string why;
        const auto read = decodeRawSession(encodeRawSession(*session), why);
        EXPECT_EQ(read != nullptr, possible) << int{type} << ' ' << rows;
        EXPECT_EQ(why, possible ? "" : doesNotFit);
    }
}

// A replay goes through every turn, and would not come to an end in anybody's day.
TEST(RawSession, OfMoreTurnsThanADownloadHasIsRefused) {
    constexpr std::uint32_t fourHours = 460'800'000;
    const auto session = someSession();
    session->line.events = {
        {LineEvent::Kind::sentOut, 3, 1, 0}, {LineEvent::Kind::sentOut, fourHours, 2, 0}};
    std::string why;
    EXPECT_NE(decodeRawSession(encodeRawSession(*session), why), nullptr) << why;
    session->line.events[1].turn = fourHours + 1;
    EXPECT_EQ(problemOf(encodeRawSession(*session)), doesNotFit);
    session->line.events = {{LineEvent::Kind::sentOut, 0x9000'0000, 1, 0},
        {LineEvent::Kind::sentOut, 0x1000'0000, 2, 0}}; // beyond what the turns can count
    EXPECT_EQ(problemOf(encodeRawSession(*session)), doesNotFit);
}

TEST(RawSession, SaysWhatIsWrong) {
    EXPECT_EQ(problemOf({}), "is no raw session of a download");
    EXPECT_EQ(problemOf({'K', 'v', 'o'}), "is no raw session of a download");
    platform::Bytes later = encodeRawSession(*someSession());
    later[16] = '2';
    EXPECT_EQ(problemOf(later), "is of a version that this program does not know");
}

TEST(RawSession, IsNamedAfterItsRun) {
    const platform::DateTime moment{2026, 11, 15, 14, 52, 7};
    EXPECT_EQ(rawSessionName(moment, true), "26111514.52d.raw");
    EXPECT_EQ(rawSessionName(moment, false), "26111514.52d-failed.raw");
    testing::MemoryFiles files;
    ASSERT_TRUE(keepRawSession(*someSession(), "/kvo", files));
    EXPECT_TRUE(files.exists("/kvo/Backup/26111514.52d.raw"));
    files.failWrites("/kvo", testing::MemoryFiles::Failure::fullDisk);
    EXPECT_FALSE(keepRawSession(*someSession(), "/kvo", files));
}

} // namespace
} // namespace kvo::link
