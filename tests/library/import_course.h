#pragma once
// An import on a disk in memory: its questions are scripted, what it shows is kept, and its time is
// set by hand.
#include "core/run_records.h"
#include "library/import.h"
#include "tests/support/memory_files.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kvo::library {

inline constexpr int importRowsOf23 = 1213;

class RecordingImportView : public ImportView {
public:
    std::vector<std::string> shownFiles;
    std::vector<int> percents;
    int cleared = 0;
    bool progressOnView = false;
    int runsShown = 0;
    std::function<void()> onProgress;

    void showFile(const std::string& name, int number, int files) override {
        shownFiles.push_back(name + " " + std::to_string(number) + "/" + std::to_string(files));
    }
    void setProgress(int row, int rows) override {
        percents.push_back(row * 100 / rows);
        progressOnView = true;
        if (onProgress) onProgress();
    }
    void clearProgress() override {
        ++cleared;
        progressOnView = false;
    }
    void showRuns() override { ++runsShown; }
};

// A disk whose next writes of runs fail, while it still deletes; it counts what is read.
class RefusingFiles : public testing::MemoryFiles {
public:
    int refusals = 0;
    mutable std::map<std::string, int> reads;
    std::function<void(const std::string& path)> onRead;
    platform::ReadResult readOrReason(const std::string& path) const override {
        ++reads[path];
        if (onRead) onRead(path);
        return MemoryFiles::readOrReason(path);
    }
    platform::WriteResult write(const std::string& path, const platform::Bytes& content) override {
        if (refusals == 0 || !path.starts_with("/kvo/Data"))
            return MemoryFiles::write(path, content);
        --refusals;
        return {false, "The disk is full.", platform::FileFailure::full};
    }
};

inline platform::Bytes asBytes(const std::string& text) {
    return {text.begin(), text.end()};
}

inline std::string importText(int rows, const std::string& analog = "104 ") {
    std::string text = "23 VRN old program\r\n4 2 1 13 8249 53 49 8488 11628 2.11 3327 18.15 6885 "
                       "17.21 4380 4.18 \r\n";
    for (int i = 1; i <= rows; ++i)
        text += std::to_string(i) + " 6555 9236 440 7380 29 101 102 103 " + analog +
                "105 106 107 77 \r\n";
    text += "2.7\r\n1.9\r\n1.5\r\n1.2\r\n1\r\n";
    for (int n = 1; n <= 8; ++n) text += "Name\r\n";
    for (int n = 1; n <= 8; ++n) text += "1 2.5 -3 \r\n";
    return text;
}

inline platform::Bytes importedRunFile(const std::string& line) {
    core::ByteWriter writer;
    core::encodeHeaderLine(writer, line);
    writer.fillTo(3 * core::runRecordWidth);
    return writer.take();
}

class ImportCourse : public ::testing::Test {
protected:
    ImportCourse() {
        EXPECT_TRUE(files.makeFolder("/kvo/Data"));
        EXPECT_TRUE(files.makeFolder("/disk"));
        import.Data_File();
    }
    ~ImportCourse() override {
        EXPECT_EQ(dialogs.problems(), "");
        EXPECT_FALSE(view.progressOnView);
    }

    // A file on the disk to import from, made on that day of November 2026.
    void put(const std::string& name, const std::string& content, int day = 15) {
        put(name, asBytes(content), day);
    }
    void put(const std::string& name, const platform::Bytes& content, int day = 15) {
        files.put("/disk/" + name, content);
        files.setCreatedOn("/disk/" + name, {2026, 11, day, 9, 30, 0});
    }
    void expectDate(const std::string& name, platform::Reply reply = platform::Reply::yes) {
        dialogs.expectBoxTitled("File Date for [ " + name + " ]", reply);
    }
    void expectText(const std::string& name, const std::string& number) {
        expectDate(name);
        dialogs.expectInputTitled("VRN Dos Import", number);
    }
    ImportedBatch dos(const std::vector<std::string>& names) {
        return import.Butten_Import(ImportMode::dos, "/disk", names);
    }
    ImportedBatch windows(const std::vector<std::string>& names) {
        return import.Butten_Import(ImportMode::windows, "/disk", names);
    }
    std::vector<core::RunIndexEntry> index() const {
        return core::readRunIndex("/kvo/Data/KvoData.Ini", files);
    }
    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const auto& entry : index()) all.push_back(entry.Description);
        return all;
    }
    std::string header(const std::string& name) const {
        const auto file = files.read("/kvo/Data/" + name);
        if (!file) return "no file";
        return core::decodeHeaderLine(core::runRecord(*file, 1)).value_or("no line");
    }

    RefusingFiles files;
    testing::ScriptedDialogs dialogs;
    RecordingImportView view;
    core::AppConfig config;
    std::string folder = "/kvo";
    RunList runs;
    std::chrono::steady_clock::time_point time;
    Import import{{config, folder, runs, [this] { return time; }}, view, dialogs, files};
};

} // namespace kvo::library
