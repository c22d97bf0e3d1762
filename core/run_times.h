#pragma once
// KvoTimes: the newest 25 timed runs of the program, from which the time graph is drawn. 44-byte
// records in ascending order of their key.
#include "core/basic/from_one.h"
#include "platform/files.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvo::core {

// Times in hundredths of a second.
struct TimedRun {
    std::int32_t Key = 0; // RunDateKey of the run
    std::string Label;    // 30 characters in the file
    std::int16_t Time60 = 0;
    std::int16_t Time330 = 0;
    std::int16_t Time660 = 0;
    std::int16_t Time1000 = 0;
    std::int16_t TimeET = 0;
    friend bool operator==(const TimedRun&, const TimedRun&) = default;
};

struct RunTimesTable {
    // Reads it took: one more than the file has records, the one that met the end; 26 at most. Its
    // users go up to one less.
    int RunTimesCount = 0;
    FromOne<TimedRun, 26> entries; // labels right-trimmed
    std::string unread;            // why a file that is there could not be read
};

// The times of a run as typed.
struct TypedTimes {
    std::string Text_60FootTime;
    std::string Text_330FootTime;
    std::string Text_660FootTime;
    std::string Text_1000FootTime;
    std::string Text_ET;
};

// A missing file is created empty and gives an empty table.
RunTimesTable LoadTimesTable(const std::string& appFolder, platform::Files& files);

// Puts a run into the table by the header line of its file: in place where its key is there
// already, else added; the oldest goes when 24 others are newer. A run older than a full table is
// dropped. A time beyond 327.67 seconds leaves the field as the record held it.
[[nodiscard]] platform::WriteResult updateTimesTable(const std::string& appFolder,
    std::string_view runHeaderLine, const TypedTimes& times, platform::Files& files);

} // namespace kvo::core
