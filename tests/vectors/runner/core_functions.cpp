// Golden vectors of numbers and dates.
#include "core_functions.h"

#include "core/basic/format.h"
#include "core/basic/numbers.h"

#include <cstdint>
#include <optional>

namespace kvo::vectors {

using namespace kvo::core;

platform::DateTime momentOf(const Json& in) {
    platform::DateTime moment;
    moment.year = in.at("y").get<int>();
    moment.month = in.at("mo").get<int>();
    moment.day = in.at("d").get<int>();
    moment.hour = in.value("h", 0);
    moment.minute = in.value("mi", 0);
    return moment;
}

template <typename Value> static Json valueOrError(const std::optional<Value>& value) {
    if (!value) return Json{{"error", true}};
    return Json{{"value", *value}};
}

static double number(const Json& in) {
    return in.at("value").get<double>();
}

template <typename Numbered> static Json text(const Numbered& written, const Json& in) {
    if (in.at("kind") == "single") {
        return Json{{"text", toJson(written(static_cast<float>(number(in))))}};
    }
    return Json{{"text", toJson(written(number(in)))}};
}

static void addNumbers() {
    add("Val", [](const Case& c) { return Json{{"value", Val(textOf(c.in.at("text")))}}; });
    add("CInt", [](const Case& c) { return valueOrError(CInt(number(c.in))); });
    add("CLng", [](const Case& c) { return valueOrError(CLng(number(c.in))); });
    add("Fix", [](const Case& c) { return Json{{"value", Fix(number(c.in))}}; });
    add("IntDiv", [](const Case& c) {
        return valueOrError(
            intDiv(c.in.at("a").get<std::int32_t>(), c.in.at("b").get<std::int32_t>()));
    });
    add("Str", [](const Case& c) { return text([](auto value) { return Str(value); }, c.in); });
    add("CStr", [](const Case& c) { return text([](auto value) { return CStr(value); }, c.in); });
}

static void addPictures() {
    add("FormatNumber", [](const Case& c) {
        return Json{{"text", toJson(Format(number(c.in), textOf(c.in.at("picture"))))}};
    });
    add("FormatDate", [](const Case& c) {
        return Json{{"text", toJson(Format(momentOf(c.in), textOf(c.in.at("picture"))))}};
    });
    add("AnalogFormat", [](const Case& c) {
        std::string slot = textOf(c.in.at("slot"));
        AnalogFormat(c.in.at("decimals").get<int>(), slot);
        return Json{{"slot", toJson(slot)}};
    });
    // The graph has lines of the same name that say "degrees".
    add("ExhaustToDegrees", [](const Case& c) {
        const int degrees =
            ExhaustToDegrees(c.in.at("raw").get<int>(), c.in.at("Exhaust").get<int>());
        return Json{{"value", degrees}, {"degrees", degrees}};
    });
}

void addCoreFunctions() {
    addNumbers();
    addPictures();
    addCoreConfigFunctions();
    addCoreFileFunctions();
    addCoreInfoFunctions();
}

} // namespace kvo::vectors
