#pragma once
// Local date and time for names, titles and the date check.
namespace kvo::platform {

// A moment of local time. Months count from 1, hours from 0 to 23.
struct DateTime {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual DateTime now() const = 0;
};

} // namespace kvo::platform
