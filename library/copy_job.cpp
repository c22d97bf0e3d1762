#include "library/copy_job.h"

#include "core/paths.h"
#include "core/run_info.h"
#include "library/chooser_list.h"
#include "library/folder_browser.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace kvo::library {

namespace {

using platform::FileFailure;
using platform::WriteResult;
namespace boxStyle = platform::boxStyle;

struct CopyFailureText {
    FileFailure failure;
    const char* text;
    bool namesSource; // the source stands in front of the text
};

constexpr std::array copyFailureTexts{
    CopyFailureText{FileFailure::notFound, " Not Found      ", true},
    CopyFailureText{FileFailure::full, "  Insufficent Room To Copy File  ", false},
    CopyFailureText{FileFailure::notReady, "       Disk Not Ready      ", false},
};
constexpr const char* anyOtherCopyFailure = "        Error Copying File       ";

std::string copyFailureText(FileFailure failure, const std::string& source) {
    for (const CopyFailureText& row : copyFailureTexts) {
        if (row.failure == failure) return (row.namesSource ? source : std::string()) + row.text;
    }
    return anyOtherCopyFailure;
}

// Capitals of the letters that a file's text can have; UTF-8.
std::string capitals(std::string text) {
    constexpr char leadOfAccents = '\xC3'; // U+00C0 to U+00FF, small ones from U+00E0 on
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool accent = i > 0 && text[i - 1] == leadOfAccents && byte >= 0xA0 && byte <= 0xBE &&
                            byte != 0xB7; // the sign of division is no letter
        const bool letter = byte >= 'a' && byte <= 'z';
        if (accent || letter) text[i] = static_cast<char>(byte - 0x20);
    }
    return text;
}

} // namespace

std::string withoutFinalSeparator(std::string_view path, const platform::Files& files) {
    const bool ends = !path.empty() && path.back() == files.separator();
    if (ends && !isRootFolder(path)) path.remove_suffix(1);
    return std::string(path);
}

bool MakePath(std::string_view path, platform::Files& files) {
    const std::string whole = withoutFinalSeparator(path, files);
    const auto next = [&](std::size_t from) { return whole.find(files.separator(), from); };
    for (std::size_t at = next(0); at != std::string::npos;) {
        at = next(at + 1);
        if (at != std::string::npos) (void)files.makeFolder(whole.substr(0, at));
    }
    (void)files.makeFolder(whole);
    return files.folderExists(whole);
}

int CopyJob::copy(const std::vector<core::RunIndexEntry>& rows,
    const std::vector<std::size_t>& selected, std::string_view destination) {
    m_count = 0;
    m_destination = withoutFinalSeparator(destination, m_files);
    m_view.showDestination(m_destination);
    Course course = mayStart(selected) ? Course::goesOn : Course::ends;
    for (const std::size_t row : selected) {
        if (course == Course::ends) break;
        m_dialogs.setHourglass(true);
        m_view.moveTo(row);
        m_view.lockControls(true);
        course = copyRun(rows[row]);
        if (course == Course::goesOn) m_view.deselect(row);
    }
    m_dialogs.setHourglass(false);
    if (course == Course::goesOn && m_count > 0) {
        m_dialogs.messageBox(" " + std::to_string(m_count) + "        Files Copyed to Disk        ",
            boxStyle::ok, core::programName);
    }
    m_view.hideProgress();
    m_view.lockControls(false);
    return m_count;
}

bool CopyJob::mayStart(const std::vector<std::size_t>& selected) {
    if (selected.empty()) {
        m_dialogs.messageBox("No File's Selected.", boxStyle::critical, "File Error");
        return false;
    }
    if (m_destination.empty()) {
        m_dialogs.messageBox("No Destination Path Entered.", boxStyle::critical, "Error");
        return false;
    }
    const WriteResult entered = m_files.enterable(m_destination);
    return entered || told(entered.failure, {}) == Course::goesOn;
}

// A separator behind it, of which the root of a disk has one already.
std::string CopyJob::shownDestination() const {
    return isRootFolder(m_destination) ? m_destination : m_destination + m_files.separator();
}

// The run file, then its info file. A run whose old copy the user keeps keeps the old notes too.
CopyJob::Course CopyJob::copyRun(const core::RunIndexEntry& run) {
    const std::string source = platform::fromFile(run.FileName);
    m_view.showProgress(
        "      COPYING        " + capitals(source) + "   to  " + capitals(shownDestination()));
    const Outcome runFile = copyFile(run.FileName, false);
    if (runFile.copied == Copied::yes) ++m_count;
    if (runFile.course == Course::ends || runFile.copied == Copied::kept) return runFile.course;
    const std::string info = core::infoFilePath(run.FileName);
    m_view.showProgress(
        "      COPYING     " + platform::fromFile(info) + "  to   " + shownDestination());
    return copyFile(info, true).course;
}

CopyJob::Outcome CopyJob::copyFile(const std::string& name, bool mayBeMissing) {
    const std::string from = dataFilePath(m_appFolder, name, m_files);
    WriteResult result{false, {}, FileFailure::notFound}; // a name that can be no run's
    Outcome outcome;
    if (!from.empty()) {
        const std::string to = core::joined(m_destination, core::baseName(from), m_files);
        result = put(from, to, outcome.copied);
    }
    if (result || (mayBeMissing && result.failure == FileFailure::notFound)) return outcome;
    outcome.course = told(result.failure, platform::fromFile(name));
    return outcome;
}

// On failure the target is as it was: on a full disk nothing of a part is left.
WriteResult CopyJob::put(const std::string& from, const std::string& to, Copied& copied) {
    platform::ReadResult source = m_files.readOrReason(from);
    if (!source) return {false, std::move(source.message), source.failure};
    const platform::ReadResult old = m_files.readOrReason(to);
    if (old || old.failure != FileFailure::notFound) {
        const bool same = old.content == source.content;
        if (same) copied = Copied::yes;
        if (same) return {};
        if (auto refused = m_files.replaceable(to); !refused) return refused;
        if (!mayReplace(to)) {
            copied = Copied::kept;
            return {};
        }
    }
    WriteResult written = m_files.write(to, *source.content);
    if (written) copied = Copied::yes;
    return written;
}

bool CopyJob::mayReplace(const std::string& path) {
    m_dialogs.setHourglass(false);
    const auto reply = m_dialogs.messageBox(
        path + "\nis there already, and it is another file.\n\nDo you want to replace it?",
        boxStyle::yesNo + boxStyle::warning + boxStyle::secondDefault, "File Exists");
    m_dialogs.setHourglass(true);
    return reply == platform::Reply::yes;
}

CopyJob::Course CopyJob::told(FileFailure failure, const std::string& source) {
    m_dialogs.setHourglass(false);
    if (failure != FileFailure::noSuchPath) {
        m_dialogs.messageBox(copyFailureText(failure, source), boxStyle::ok, core::programName);
        return Course::goesOn;
    }
    const auto reply = m_dialogs.messageBox(
        m_destination + "\r\rDo you wont to create it?", boxStyle::yesNo, "Path Not Found");
    if (reply != platform::Reply::yes) return Course::ends;
    (void)MakePath(m_destination, m_files); // the copy tells where it is still not there
    return Course::goesOn;
}

} // namespace kvo::library
