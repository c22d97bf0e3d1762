// Golden vectors of the calculators.
#include "calc/conversions.h"
#include "calc/engine.h"
#include "core/basic/numbers.h"
#include "vector_tools.h"

#include <stdexcept>

namespace kvo::vectors {

using namespace kvo::calc;

static std::string withoutLeadingBlank(std::string text) {
    if (text.starts_with(' ')) text.erase(0, 1);
    return text;
}

static std::string box(int row) {
    return "Text" + core::CStr(row);
}

static std::string unitLabel(int row) {
    return "Label" + core::CStr(row + 5);
}

static Json shownBy(const CalcForm& form) {
    Json got{{"Label5", toJson(form.Label5)}, {"MetricShown", form.MetricShown}};
    for (int row = 1; row <= 3; ++row) {
        if (form.unit[row].empty()) continue;
        got[box(row)] = toJson(form.Text[row]);
        got[unitLabel(row)] = toJson(form.unit[row]);
    }
    return got;
}

static void take(CalcForm& form, const Json& step) {
    if (step.contains("set")) {
        for (int row = 1; row <= 3; ++row)
            if (step.at("set").contains(box(row)))
                form.Text[row] = textOf(step.at("set").at(box(row)));
        return;
    }
    const std::string button = textOf(step.at("click"));
    if (button == "Command1") {
        Command1_Click(form);
    } else if (button == "ToggleMetric") {
        ToggleMetric_Click(form);
    } else {
        throw std::runtime_error("no such button: " + button);
    }
}

// Boxes that the switch wrote may begin with a blank in the line.
static void dropLeadingBlanks(Json& after) {
    for (int row = 1; row <= 3; ++row)
        if (after.contains(box(row)))
            after[box(row)] = toJson(withoutLeadingBlank(textOf(after.at(box(row)))));
}

static Json calculated(const Case& c) {
    const EngineSum* sum = engineSum(textOf(c.in.at("title")));
    if (sum == nullptr) throw std::runtime_error("no such sum");
    CalcForm form = openedCalcForm(*sum);
    for (int row = 1; row <= 3; ++row)
        if (textOf(c.in.at("labels").at(unitLabel(row))) != form.unit[row])
            throw std::runtime_error("another unit in row " + core::CStr(row));
    Json got{{"after", Json::array()}};
    bool toggled = false;
    for (std::size_t i = 0; i < c.in.at("steps").size(); ++i) {
        const Json& step = c.in.at("steps").at(i);
        take(form, step);
        toggled = toggled || step.contains("click");
        got["after"].push_back(shownBy(form));
        if (toggled) {
            dropLeadingBlanks(got["after"].back());
            dropLeadingBlanks(c.expected.at("after").at(i));
        }
    }
    return got;
}

static Json convertedByTyping(const Case& c) {
    Conversions form;
    Command1_Click(form, c.in.at("button").get<int>());
    const auto typedIn = c.in.at("box").get<std::size_t>();
    form.Text1.at(typedIn) = textOf(c.in.at("typed"));
    form.Text1.at(1 - typedIn) = textOf(c.in.at("other"));
    Text1_KeyUp(form, static_cast<int>(typedIn));
    return Json{{"box0", toJson(form.Text1[0])}, {"box1", toJson(form.Text1[1])}};
}

static Json chosenPair(const Case& c) {
    Conversions form;
    form.Text1 = {"1", "2"};
    Command1_Click(form, c.in.at("button").get<int>());
    const UnitPair& pair = unitPairs()[static_cast<std::size_t>(form.pair)];
    return Json{{"title", toJson(pair.title)}, {"Label2_0", toJson(pair.left)},
        {"Label2_1", toJson(pair.right)}, {"box0", toJson(form.Text1[0])},
        {"box1", toJson(form.Text1[1])}};
}

void addCalcFunctions() {
    add("CalcForm", calculated);
    add("CalcConvert", [](const Case& c) {
        const auto conversion = conversionNamed(textOf(c.in.at("routine")));
        const auto value = converted(conversion.value(), c.in.at("value").get<double>());
        return value ? Json{{"ConvertedValue", *value}} : Json{{"error", true}};
    });
    add("Conversions", convertedByTyping);
    add("ConversionPair", chosenPair);
}

} // namespace kvo::vectors
