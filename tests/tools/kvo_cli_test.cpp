// The program kvo-cli as a script runs it. Its path is in KVO_CLI, that of make_runs in
// KVO_MAKE_RUNS.
#if defined(__unix__)
#include "channels/run_view.h"
#include "core/config.h"
#include "core/default_config.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "graph/export_csv.h"
#include "platform/os/os_files.h"
#include "platform/os/os_folder_lock.h"
#include "tests/contract/temporary_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

namespace kvo {
namespace {

using nlohmann::json;

struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

struct KvoCli : ::testing::Test {
    KvoCli() {
        const char* maker = std::getenv("KVO_MAKE_RUNS");
        EXPECT_NE(maker, nullptr);
        runs = folder / "my runs \xC3\xA4";
        std::filesystem::create_directory(runs);
        const core::AppConfig config = core::defaultConfig();
        EXPECT_TRUE(core::SaveConfig(runs, config, files));
        EXPECT_EQ(std::system((quoted(maker) + " " + quoted(runs) + " >/dev/null").c_str()), 0);
        first = core::readRunIndex(core::indexPath(runs, files), files).front().FileName;
        path = runs + "/Data/" + first;
    }
    static std::string quoted(const std::string& word) { return "'" + word + "'"; }
    // Started in a folder that is not the program's, without a display.
    Outcome run(const std::string& arguments) {
        const char* program = std::getenv("KVO_CLI");
        if (program == nullptr) return {};
        const std::string work = folder / "work";
        std::filesystem::create_directory(work);
        const std::string command =
            "cd " + quoted(work) + " && env -u DISPLAY QT_QPA_PLATFORM=none " + quoted(program) +
            " " + arguments + " >" + quoted(folder / "out") + " 2>" + quoted(folder / "err");
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text(folder / "out"),
            text(folder / "err")};
    }
    Outcome runOn(const std::string& command, const std::string& more = "") {
        return run(command + " " + more + " " + quoted(path));
    }
    std::string text(const std::string& file) {
        const auto content = files.read(file);
        return content ? std::string(content->begin(), content->end()) : std::string();
    }
    // Every file of the folder with its content.
    std::map<std::string, std::string> everything() {
        std::map<std::string, std::string> all;
        for (const auto& one : std::filesystem::recursive_directory_iterator(runs))
            if (one.is_regular_file()) all[one.path().string()] = text(one.path().string());
        return all;
    }
    // What the window would export.
    std::string table(graph::CsvLook look = {}) {
        auto loaded = std::make_unique<core::OpenRun>();
        EXPECT_TRUE(core::LoadRun(path, *loaded, files));
        const auto bytes = graph::runAsCsv(
            channels::viewOfRun(*loaded), core::defaultConfig(), {1, loaded->SampleCount}, look);
        return {bytes.begin(), bytes.end()};
    }

    testing::TemporaryFolder folder;
    platform_os::OsFiles files;
    std::string runs;
    std::string first; // the file of the first run of the list
    std::string path;
};

} // namespace

TEST_F(KvoCli, MisuseIsToldAndLeavesNothing) {
    for (const char* words :
        {"", "dance", "list a b", "info", "export --csv", "export x", "export --csv --png x",
            "export --png --size 10x10 x", "export --png --size 9000x500 x",
            "export --csv --decimal x x", "export --csv --decimal , --separator , x",
            "export --csv --from soon x", "export --csv --from '' x", "export --csv --overlay x x",
            "export --csv --white x", "export --csv --size 900x500 x", "export --png --from 1 x",
            "export --pdf --to 1 x", "export --svg --decimal , x", "export --png --separator , x",
            "list --csv", "import", "import --date never x", "simulate --type 99"}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.code, 2) << words;
        EXPECT_EQ(outcome.out, "") << words;
        EXPECT_TRUE(outcome.err.starts_with("kvo-cli: ")) << words << outcome.err;
        EXPECT_NE(outcome.err.find("\nusage: kvo-cli"), std::string::npos) << words;
    }
    for (const char* command : {"list", "info", "stats", "export", "check", "import", "simulate"}) {
        const Outcome outcome = run(std::string(command) + " --help");
        EXPECT_EQ(outcome.code, 0);
        EXPECT_TRUE(outcome.out.starts_with(std::string("usage: kvo-cli ") + command));
        EXPECT_NE(run("--help").out.find(std::string("  kvo-cli ") + command), std::string::npos);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder / "work"));
}

TEST_F(KvoCli, ListTellsTheRunsInTheirOrder) {
    const auto rows = core::readRunIndex(core::indexPath(runs, files), files);
    std::string wanted;
    for (const auto& row : rows) wanted += row.FileName + "\t" + row.Description + "\n";
    Outcome outcome = run("list " + quoted(runs));
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out, wanted);
    std::filesystem::remove(path);
    outcome = run("list --json " + quoted(runs));
    const json told = json::parse(outcome.out);
    ASSERT_EQ(told.size(), rows.size());
    EXPECT_EQ(told.at(0)["file"], first);
    EXPECT_EQ(told.at(0)["title"], rows[0].Description);
    EXPECT_EQ(told.at(0)["found"], false);
    EXPECT_EQ(told.at(1)["found"], true);
    EXPECT_NE(run("list " + quoted(runs)).out.find("\tmissing\n"), std::string::npos);
    EXPECT_EQ(run("list").out, ""); // a folder without a list
    EXPECT_EQ(run("list /no/such").code, 1);
}

TEST_F(KvoCli, AFolderOfRunsThatCannotBeReadIsTold) {
    const std::string data = runs + "/Data";
    std::filesystem::rename(data, runs + "/elsewhere");
    std::ofstream(data) << "no folder";
    for (const char* command : {"list ", "check "}) {
        const Outcome outcome = run(command + quoted(runs));
        EXPECT_EQ(outcome.code, 1) << command;
        EXPECT_NE((outcome.out + outcome.err).find("Data"), std::string::npos) << command;
    }
}

TEST_F(KvoCli, InfoAndStatsTellWhatTheWindowsShow) {
    const Outcome info = runOn("info");
    EXPECT_EQ(info.code, 0) << info.err;
    EXPECT_NE(info.out.find("title:"), std::string::npos);
    const json told = json::parse(runOn("info", "--json").out);
    EXPECT_EQ(told["file"], path);
    EXPECT_GT(told["samples"], 1000);
    EXPECT_TRUE(told["times"].contains("elapsed"));
    EXPECT_TRUE(told["setup"].is_array());
    EXPECT_EQ(info.err, "");
    // A name of the list is enough where the folder is told.
    EXPECT_EQ(run("info --folder " + quoted(runs) + " " + first).out, info.out);
    const json stats = json::parse(runOn("stats", "--json").out);
    EXPECT_EQ(stats["channels"].at(0)["name"], "Engine");
    EXPECT_GT(stats["channels"].at(0)["maximum"], stats["channels"].at(0)["minimum"]);
    EXPECT_NE(runOn("stats").out.find("Engine:"), std::string::npos);
}

TEST_F(KvoCli, ATableIsThatOfTheWindow) {
    Outcome outcome = runOn("export", "--csv -o -");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.out, table());
    EXPECT_EQ(runOn("export", "--csv --decimal , -o -").out, table({',', ';'}));
    EXPECT_EQ(runOn("export", "--csv --separator ';' -o -").out, table({'.', ';'}));
    // From the launch to half a second behind it: 51 samples and the names.
    outcome = runOn("export", "--csv --from 0 --to 0.5 -o -");
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 52);
    EXPECT_NE(outcome.out.find("\n0.00,"), std::string::npos);
    EXPECT_NE(outcome.out.find("\n0.50,"), std::string::npos);
    EXPECT_EQ(runOn("export", "--csv --from 9999 -o -").code, 1);
    EXPECT_EQ(runOn("export", "--csv --from 1 --to 0.5 -o -").code, 1);
}

TEST_F(KvoCli, NothingIsReplacedUnasked) {
    EXPECT_EQ(runOn("export", "--csv").code, 0);
    std::string name;
    for (const auto& one : std::filesystem::directory_iterator(folder / "work"))
        name = one.path().filename().string();
    EXPECT_TRUE(name.ends_with(".csv")) << name;
    EXPECT_EQ(text(folder / "work/" + name), table());
    const Outcome again = runOn("export", "--csv");
    EXPECT_EQ(again.code, 1);
    EXPECT_NE(again.err.find("--replace"), std::string::npos);
    EXPECT_EQ(runOn("export", "--csv --replace").code, 0);
    const std::string before = text(path);
    EXPECT_EQ(runOn("export", "--csv --replace -o " + quoted(path)).code, 1);
    EXPECT_EQ(text(path), before);
    EXPECT_EQ(runOn("export", "--csv -o /no/such/x.csv").code, 1);
}

TEST_F(KvoCli, NoExportTakesThePlaceOfARun) {
    const std::string second = json::parse(run("list --json " + quoted(runs)).out).at(1)["file"];
    const std::string other = runs + "/Data/" + second;
    const std::string before = text(other);
    const Outcome outcome = runOn("export", "--csv --replace -o " + quoted(other));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("is a run"), std::string::npos) << outcome.err;
    EXPECT_EQ(text(other), before);
}

TEST_F(KvoCli, OfARunThatIsCutShortItIsSaid) {
    std::filesystem::resize_file(path, 20000);
    for (const char* command : {"info", "stats", "export --csv -o -"}) {
        const Outcome outcome = runOn(command);
        EXPECT_EQ(outcome.code, 0) << command;
        EXPECT_NE(outcome.err.find("It is cut short: 20000 bytes"), std::string::npos)
            << command << outcome.err;
    }
}

TEST_F(KvoCli, WhatIsLookedAtStaysAsItIs) {
    std::filesystem::remove(path.substr(0, path.size() - 1) + "i");
    const auto before = everything();
    for (const char* command : {"info", "stats", "export --csv -o -"})
        EXPECT_EQ(runOn(command).code, 0);
    EXPECT_EQ(run("list " + quoted(runs)).code, 0);
    EXPECT_EQ(run("check " + quoted(runs)).code, 0);
    EXPECT_EQ(everything(), before);
}

TEST_F(KvoCli, WhatIsNoRunIsRefused) {
    for (const char* command : {"info", "stats", "export --csv -o -"}) {
        const Outcome none = run(std::string(command) + " none.32d");
        EXPECT_EQ(none.code, 1);
        EXPECT_TRUE(none.err.starts_with("kvo-cli: ")) << none.err;
        const Outcome config = run(std::string(command) + " " + quoted(runs + "/Kvo.Cfg"));
        EXPECT_EQ(config.code, 1);
        EXPECT_EQ(config.out, "");
    }
}

TEST_F(KvoCli, CheckNamesWhatIsDamaged) {
    Outcome outcome = run("check " + quoted(runs));
    EXPECT_EQ(outcome.code, 0) << outcome.out;
    EXPECT_NE(outcome.out.find(" files read, 0 damaged\n"), std::string::npos) << outcome.out;
    std::filesystem::resize_file(path, 5000);
    outcome = run("check " + quoted(runs));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.out.find("damaged: Data/" + first + ": It is cut short"), std::string::npos)
        << outcome.out;
    const json told = json::parse(run("check --json " + quoted(runs)).out);
    EXPECT_EQ(told["damaged"].at(0)["file"], "Data/" + first);
}

TEST_F(KvoCli, HostileTextsChangeNoTerminalAndBreakNoJson) {
    ASSERT_TRUE(core::AddRunToIndex(runs, {"\x1B]0;x\x07.\xFFx", "1 \x1B[31m \x9B red \xE4 \"\\"},
        core::IndexOrder::asItIs, files));
    const Outcome outcome = run("list " + quoted(runs));
    EXPECT_EQ(outcome.out.find('\x1B'), std::string::npos);
    EXPECT_NE(outcome.out.find("red \xC3\xA4 \"\\"), std::string::npos);
    const json told = json::parse(run("list --json " + quoted(runs)).out);
    EXPECT_TRUE(told.back()["title"].get<std::string>().ends_with("red \xC3\xA4 \"\\"));
    EXPECT_EQ(run("check " + quoted(runs)).code, 1);
}

TEST_F(KvoCli, ImportBringsRunsIn) {
    const std::string target = folder / "other";
    std::filesystem::create_directory(target);
    const std::string words = "import --date 15-11-2026 --folder " + quoted(target);
    Outcome outcome = run(words + " " + quoted(path));
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    const auto rows = core::readRunIndex(core::indexPath(target, files), files);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(outcome.out, target + "/Data/" + rows[0].FileName + "\n");
    EXPECT_EQ(text(target + "/Data/" + rows[0].FileName), text(path));
    EXPECT_FALSE(files.exists(target + "/Kvo.lock"));
    // There already.
    outcome = run(words + " " + quoted(path));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("already in Data Base"), std::string::npos) << outcome.err;
    EXPECT_EQ(run(words + " --replace " + quoted(path)).code, 0);
    EXPECT_EQ(run(words + " /no/such.32d").code, 1);
    EXPECT_EQ(
        run("import --dos --folder " + quoted(target) + " " + quoted(runs + "/Kvo.Cfg")).code, 1);
}

TEST_F(KvoCli, ImportLeavesAFolderAloneThatIsHeld) {
    platform_os::OsFolderLock lock;
    ASSERT_FALSE(lock.take(runs));
    const auto before = everything();
    const Outcome outcome = run("import --folder " + quoted(runs) + " " + quoted(path));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("has this folder open"), std::string::npos) << outcome.err;
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(run("list " + quoted(runs)).code, 0);
}

TEST_F(KvoCli, ASimulatedLoggerSaysItsName) {
    const char* program = std::getenv("KVO_CLI");
    ASSERT_NE(program, nullptr);
    const std::string command = quoted(program) + " simulate --type 32 & echo $!";
    std::FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::array<char, 256> line{};
    std::string said;
    int process = 0;
    for (int i = 0; i < 2 && std::fgets(line.data(), line.size(), pipe) != nullptr; ++i) {
        said += line.data();
        if (const int number = std::atoi(line.data()); number > 0) process = number;
    }
    EXPECT_NE(said.find("/dev/pts/"), std::string::npos) << said;
    ASSERT_GT(process, 0);
    kill(process, SIGTERM);
    pclose(pipe);
}

#ifdef KVO_CLI_PICTURES
TEST_F(KvoCli, PicturesNeedNoDisplay) {
    Outcome outcome = runOn("export", "--png --size 800x500 -o -");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(outcome.out.starts_with("\x89PNG"));
    EXPECT_EQ(outcome.out.substr(16, 8), std::string("\0\0\x03\x20\0\0\x01\xF4", 8));
    const std::string dark = outcome.out;
    EXPECT_NE(runOn("export", "--png --size 800x500 --white -o -").out, dark);
    const std::string second = json::parse(run("list --json " + quoted(runs)).out).at(1)["file"];
    outcome = runOn(
        "export", "--png --size 800x500 --overlay " + quoted(runs + "/Data/" + second) + " -o -");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_NE(outcome.out, dark);
    EXPECT_EQ(runOn("export", "--png --overlay none -o -").code, 1);
    EXPECT_TRUE(runOn("export", "--svg -o -").out.starts_with("<?xml"));
    EXPECT_TRUE(runOn("export", "--pdf -o -").out.starts_with("%PDF-"));
    const auto before = everything();
    EXPECT_EQ(runOn("export", "--png").code, 0);
    EXPECT_EQ(everything(), before);
}

// The window keeps how far it is enlarged; a picture has no bars to scroll with.
TEST_F(KvoCli, APictureShowsTheWholeRun) {
    const std::string whole = runOn("export", "--png --size 800x500 -o -").out;
    core::AppConfig config = core::defaultConfig();
    config.ScaleCustom = 2;
    ASSERT_TRUE(core::SaveConfig(runs, config, files));
    EXPECT_EQ(runOn("export", "--png --size 800x500 -o -").out, whole);
}
#endif

} // namespace kvo
#endif
