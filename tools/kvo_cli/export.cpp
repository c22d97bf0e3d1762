// export: a run as a table or as a picture, the same bytes that the graph window exports.
#include "core/basic/numbers.h"
#include "core/opening.h"
#include "core/paths.h"
#include "core/records.h"
#include "graph/export_csv.h"
#include "graph/export_file.h"
#include "tools/kvo_cli/cli.h"
#include "tools/kvo_cli/run_place.h"
#ifdef KVO_CLI_PICTURES
#include "tools/kvo_cli/pictures.h"
#endif

#include <algorithm>
#include <charconv>
#include <iostream>
#include <optional>
#include <utility>

namespace kvo::cli {
namespace {

struct ExportKind {
    const char* word;
    const graph::ExportForm& form;
};
constexpr ExportKind kinds[] = {{"--csv", graph::csvForm}, {"--png", graph::pngForm},
    {"--svg", graph::svgForm}, {"--pdf", graph::pdfForm}};

// What the command line says of an export, and what is wrong with it.
struct ExportWish {
    const ExportKind* kind = nullptr;
    graph::CsvLook look;
    std::optional<double> fromSeconds;
    std::optional<double> toSeconds;
    int widthPx = 1366;
    int heightPx = 768;
    std::string wrong;
};

std::string optionOf(const command_line::Arguments& arguments, const char* name) {
    const auto found = arguments.options.find(name);
    return found == arguments.options.end() ? std::string() : found->second;
}

bool takeSide(std::string_view text, int& side) {
    const auto read = std::from_chars(text.data(), text.data() + text.size(), side);
    return read.ec == std::errc() && read.ptr == text.data() + text.size() &&
           side >= graph::leastPictureSide && side <= graph::mostPictureSide;
}

void takeSize(const std::string& text, ExportWish& wish) {
    const std::size_t cross = text.find('x');
    if (cross != std::string::npos && takeSide(text.substr(0, cross), wish.widthPx) &&
        takeSide(text.substr(cross + 1), wish.heightPx))
        return;
    wish.wrong = text + " is no size from " + std::to_string(graph::leastPictureSide) + " to " +
                 std::to_string(graph::mostPictureSide) + " pixels";
}

void takeLook(const command_line::Arguments& arguments, ExportWish& wish) {
    const std::string sign = optionOf(arguments, "--decimal");
    if (sign == ",") wish.look = graph::csvLookOf(U',');
    if (!sign.empty() && sign != "." && sign != ",") wish.wrong = "a decimal sign is . or ,";
    const std::string between = optionOf(arguments, "--separator");
    if (between.empty()) return;
    if (between.size() != 1 || std::string_view(",;|:\t").find(between) == std::string_view::npos ||
        between.front() == wish.look.decimalSign) {
        wish.wrong = "cells are parted by , ; | : or a tabulator, and not by the decimal sign";
        return;
    }
    wish.look.separator = between.front();
}

void takeSeconds(const command_line::Arguments& arguments, const char* option,
    std::optional<double>& seconds, ExportWish& wish) {
    if (!arguments.has(option)) return;
    const std::string text = optionOf(arguments, option);
    seconds = core::strictNumber(text);
    if (!seconds) wish.wrong = text + " is no number of seconds";
}

// An option that does nothing is a mistake of who has written it.
void refuseUseless(const command_line::Arguments& arguments, ExportWish& wish) {
    const bool table = &wish.kind->form == &graph::csvForm;
    for (const char* option : {"--overlay", "--size", "--white"})
        if (table && arguments.has(option)) wish.wrong = std::string(option) + " is for pictures";
    for (const char* option : {"--from", "--to", "--decimal", "--separator"})
        if (!table && arguments.has(option)) wish.wrong = std::string(option) + " is for a table";
}

ExportWish wishOf(const command_line::Arguments& arguments) {
    ExportWish wish;
    for (const ExportKind& one : kinds) {
        if (!arguments.has(one.word)) continue;
        if (wish.kind != nullptr) wish.wrong = "one of --csv, --png, --svg and --pdf is enough";
        wish.kind = &one;
    }
    if (wish.kind == nullptr) wish.wrong = "--csv, --png, --svg or --pdf is missing";
    takeLook(arguments, wish);
    takeSeconds(arguments, "--from", wish.fromSeconds, wish);
    takeSeconds(arguments, "--to", wish.toSeconds, wish);
    if (arguments.has("--size")) takeSize(arguments.options.at("--size"), wish);
    if (wish.kind != nullptr) refuseUseless(arguments, wish);
    return wish;
}

// The samples from the first to the last second, both included.
graph::SampleStretch stretchOf(const channels::RunView& run, const ExportWish& wish) {
    const auto sampleAt = [&run](double seconds, int otherwise) {
        const auto ticks = core::CLng(seconds * core::samplesPerSecond);
        return ticks ? static_cast<double>(*ticks) + run.image->tail.TimeOffset : otherwise;
    };
    graph::SampleStretch stretch = graph::wholeRun(run);
    if (wish.fromSeconds) {
        stretch.from = static_cast<int>(
            std::clamp(sampleAt(*wish.fromSeconds, run.rows + 1), 1.0, run.rows + 1.0));
    }
    if (wish.toSeconds) {
        stretch.to = static_cast<int>(
            std::clamp(sampleAt(*wish.toSeconds, run.rows), 0.0, static_cast<double>(run.rows)));
    }
    return stretch;
}

std::optional<platform::Bytes> tableOf(
    const core::OpenRun& run, const core::AppConfig& config, const ExportWish& wish) {
    const channels::RunView view = channels::viewOfRun(run);
    const graph::SampleStretch stretch = stretchOf(view, wish);
    if (!stretch.empty()) return graph::runAsCsv(view, config, stretch, wish.look);
    fail("no sample of the run lies in that stretch");
    return {};
}

#ifdef KVO_CLI_PICTURES
std::optional<platform::Bytes> pictureOf(const command_line::Arguments& arguments,
    const RunPlace& at, const ExportWish& wish, const Place& place) {
    PictureTask task;
    if (&wish.kind->form == &graph::svgForm) task.kind = PictureKind::svg;
    if (&wish.kind->form == &graph::pdfForm) task.kind = PictureKind::pdf;
    task.widthPx = wish.widthPx;
    task.heightPx = wish.heightPx;
    task.whiteGround = arguments.has("--white");
    task.run = at;
    if (arguments.has("--overlay"))
        task.overlay = runPlace(arguments, arguments.options.at("--overlay"), place.look);
    return drawPicture(task, configOf(at.folder, place.look), place.look);
}
#else
std::optional<platform::Bytes> pictureOf(
    const command_line::Arguments&, const RunPlace&, const ExportWish&, const Place&) {
    fail("this kvo-cli was built without what draws pictures");
    return {};
}
#endif

int writeOut(const std::string& path, const platform::Bytes& content, const RunPlace& at,
    bool replace, platform::Files& disk) {
    if (path == "-") {
        std::cout.write(reinterpret_cast<const char*>(content.data()),
            static_cast<std::streamsize>(content.size()));
        return done;
    }
    const std::string target = absolutePath(path);
    if (target == at.run || target == at.info) return fail(target + " is the run itself");
    if (disk.exists(target) && !replace)
        return fail(target + " is there already; --replace takes its place");
    const core::OpenedThing thing = core::thingAt(target, {}, disk);
    if (thing == core::OpenedThing::ownRun || thing == core::OpenedThing::runElsewhere)
        return fail(target + " is a run, which no export takes the place of");
    const auto written = disk.write(target, content);
    return written ? done : fail(written.message);
}

} // namespace

int exportRun(
    const Command& command, const command_line::Arguments& arguments, const Place& place) {
    const ExportWish wish = wishOf(arguments);
    if (!wish.wrong.empty()) return command_line::misuse(command.syntax, wish.wrong);
    const RunPlace at = runPlace(arguments, arguments.operands.front(), place.look);
    const auto run = openRun(at, place.look);
    if (!run) return failed;
    const bool table = &wish.kind->form == &graph::csvForm;
    const auto content = table ? tableOf(*run, configOf(at.folder, place.look), wish)
                               : pictureOf(arguments, at, wish, place);
    if (!content) return failed;
    const std::string name =
        graph::exportName(run->headerLine, core::baseName(at.run)) + wish.kind->form.extension;
    return writeOut(arguments.has("-o") ? arguments.options.at("-o") : name, *content, at,
        arguments.has("--replace"), place.disk);
}

} // namespace kvo::cli
