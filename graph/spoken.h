#pragma once
// The read-outs as they are read aloud: every value with the name of its channel and its unit, and
// all values at the cursor in one text. Texts are a file's.
#include <string>
#include <string_view>
#include <vector>

namespace kvo::graph {

// What the label beside a value shows.
enum class SecondValue { none, overlay, difference };

struct SpokenBox {
    std::string caption; // of the channel
    std::string value;   // as its label shows it; empty where it has none
    std::string second;
    SecondValue kind = SecondValue::none;
    std::string_view unit;
};

// What a channel (0 to 24) is measured in; empty where its name or its value says it.
std::string_view spokenUnit(int channel);
// A number with its thousands apart, "12,345.60 in". Any other text is left as it is.
std::string spokenNumber(std::string_view text);
// "Engine 5,595 rpm, overlay 5,610".
std::string spokenBox(const SpokenBox& box);
// The label beside it by itself: "Engine, overlay 5,610 rpm".
std::string spokenSecond(const SpokenBox& box);
// The time and all channels that have a value there; empty without a time.
std::string spokenCursor(const std::string& time, const std::vector<SpokenBox>& boxes);

} // namespace kvo::graph
