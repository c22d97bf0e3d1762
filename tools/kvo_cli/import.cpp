// import: the window's import with its questions answered by the command line.
#include "library/import.h"
#include "core/basic/numbers.h"
#include "core/paths.h"
#include "platform/os/os_folder_lock.h"
#include "platform/system_path.h"
#include "platform/unanswered_dialogs.h"
#include "tools/kvo_cli/cli.h"
#include "tools/kvo_cli/run_place.h"

#include <filesystem>
#include <iostream>

namespace kvo::cli {
namespace {

using platform::Reply;

// What the import asks is known from the start; what it tells goes to the error stream.
class ImportAnswers : public platform::UnansweredDialogs {
public:
    ImportAnswers(std::string date, bool replace) : m_date(std::move(date)), m_replace(replace) {}

    Reply messageBox(const std::string& text, int style, const std::string& title) override {
        if (title.starts_with("File Date for ")) {
            m_asked = false; // another file
            return m_date.empty() ? Reply::yes : Reply::no;
        }
        if (text.find("overwrite it?") != std::string::npos && m_replace) return Reply::yes;
        fail(title + ": " + text);
        const int buttons = style & 0x0F;
        if (buttons == platform::boxStyle::okCancel) return Reply::ok; // the next file
        return buttons == platform::boxStyle::yesNo ? Reply::no : Reply::cancel;
    }
    // An answer that is refused is not given twice.
    std::string inputBox(
        const std::string&, const std::string& title, const std::string& preset) override {
        if (title == "Run Date") return m_date;
        if (m_asked) return {};
        m_asked = true;
        return core::Val(preset) > 0 ? preset : "1";
    }

private:
    std::string m_date;
    bool m_replace;
    bool m_asked = false;
};

class NoWindow : public library::ImportView {
public:
    void showFile(const std::string&, int, int) override {}
    void setProgress(int, int) override {}
    void clearProgress() override {}
    void showRuns() override {}
};

struct Batch {
    std::string folder;
    std::vector<std::string> names;
};

// Files of one folder that follow one another are one batch.
std::vector<Batch> batchesOf(const std::vector<std::string>& paths) {
    std::vector<Batch> batches;
    for (const std::string& path : paths) {
        const std::filesystem::path whole = platform::systemPath(absolutePath(path));
        const std::string folder = platform::pathText(whole.parent_path());
        if (batches.empty() || batches.back().folder != folder) batches.push_back({folder, {}});
        batches.back().names.push_back(platform::pathText(whole.filename()));
    }
    return batches;
}

std::string heldText(const std::string& folder, const platform::FolderHolder& holder) {
    return folder + ": " + (holder.program.empty() ? "another program" : holder.program) +
           " (process " + std::to_string(holder.process) + " on " + holder.host +
           ") has this folder open";
}

} // namespace

int importRuns(
    const Command& command, const command_line::Arguments& arguments, const Place& place) {
    const std::string date = arguments.has("--date") ? arguments.options.at("--date") : "";
    if (arguments.has("--date") && !library::typedDate(date))
        return command_line::misuse(command.syntax, date + " is no date");
    const std::string folder = folderOf(arguments);
    if (auto there = place.disk.enterable(folder); !there) return fail(there.message);
    platform_os::OsFolderLock lock;
    if (const auto holder = lock.take(folder)) return fail(heldText(folder, *holder));
    const core::AppConfig config = configOf(folder, place.disk);
    library::RunList runs;
    NoWindow window;
    ImportAnswers answers(date, arguments.has("--replace"));
    library::Import import({config, folder, runs}, window, answers, place.disk);
    import.Data_File();
    const auto mode =
        arguments.has("--dos") ? library::ImportMode::dos : library::ImportMode::windows;
    int imported = 0;
    for (const Batch& batch : batchesOf(arguments.operands)) {
        const library::ImportedBatch result = import.Butten_Import(mode, batch.folder, batch.names);
        imported += result.imported;
        for (const std::string& path : result.written) std::cout << printable(path) << '\n';
    }
    return imported == static_cast<int>(arguments.operands.size()) ? done : failed;
}

} // namespace kvo::cli
