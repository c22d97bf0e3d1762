// The program kvo_replay as somebody runs it who doubts a download. Its path is in KVO_REPLAY.
#if defined(__unix__)
#include "platform/os/os_files.h"
#include "tests/contract/temporary_folder.h"
#include "tests/support/download_rig.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace kvo::link {
namespace {

struct Outcome {
    int code = -1;
    std::string text; // of both streams
};

Outcome runReplay(const std::string& arguments) {
    const char* program = std::getenv("KVO_REPLAY");
    Outcome outcome;
    if (program == nullptr) return outcome;
    const std::string command = std::string(program) + " " + arguments + " 2>&1";
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return outcome;
    std::array<char, 4096> part{};
    while (const auto count = std::fread(part.data(), 1, part.size(), pipe))
        outcome.text.append(part.data(), count);
    const int status = pclose(pipe);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

// A doubtful download in the safe mode, its bytes as a file of the folder.
struct DoubtfulDownload {
    DoubtfulDownload() : rig(25, false, {simulator::Fault::Kind::drop, 5000}, true) {
        rig.dialogs.expectBoxTitled("Download Check", platform::Reply::no);
        rig.expectSave();
        rig.click();
        EXPECT_EQ(rig.dialogs.problems(), "");
        EXPECT_TRUE(files.write(raw, rig.files.read("/kvo/Backup/26111514.52d.raw").value()));
    }
    testing::DownloadRig rig;
    testing::TemporaryFolder folder;
    platform_os::OsFiles files;
    std::string raw = folder / "26111514.52d.raw";
};

TEST(ReplayProgram, WritesTheSameRunAndSaysWhatCame) {
    DoubtfulDownload download;
    const Outcome outcome = runReplay(download.raw + " --out " + download.folder.path().string());
    EXPECT_EQ(outcome.code, 0) << outcome.text;
    for (const char* line :
        {"title:        1\n", "data type 25, 1213 samples, safe mode", "expected:     32786 bytes",
            "came:         32785 bytes, 1 too few", "told:         Download Check: 1 byte too few"})
        EXPECT_NE(outcome.text.find(line), std::string::npos) << line << outcome.text;
    EXPECT_EQ(download.files.read(download.folder / "26111514.52d"),
        download.rig.files.read(testing::DownloadRig::runPath));
    const Outcome again = runReplay(download.raw + " --out " + download.folder.path().string());
    EXPECT_EQ(again.code, 1);
    EXPECT_NE(again.text.find("is there already, and stays as it is"), std::string::npos);
}

TEST(ReplayProgram, WritesNothingUnlessItIsAsked) {
    DoubtfulDownload download;
    EXPECT_EQ(runReplay(download.raw).code, 0);
    EXPECT_EQ(download.files.list(download.folder.path().string()).size(), 1U);
}

TEST(ReplayProgram, RefusesWhatIsNoSession) {
    DoubtfulDownload download;
    EXPECT_EQ(runReplay("").code, 2);
    EXPECT_EQ(runReplay(download.raw + " --into x").code, 2);
    EXPECT_EQ(runReplay(download.folder / "none").code, 1);
    platform::Bytes damaged = download.files.read(download.raw).value();
    damaged[damaged.size() / 2] ^= 1U;
    ASSERT_TRUE(download.files.write(download.raw, damaged));
    const Outcome outcome = runReplay(download.raw);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(
        outcome.text, "kvo_replay: " + download.raw + " is damaged: its check sum is wrong\n");
}

} // namespace
} // namespace kvo::link
#endif
