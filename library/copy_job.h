#pragma once
// Copying runs with their info files to a folder: the checks before it, the progress, the question
// or box for each kind of failure, and the count. A file that is there already and differs is
// replaced only after a question.
#include "core/run_index.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvo::library {

// What the form shows of a copy. Texts are UTF-8.
class CopyView {
public:
    virtual ~CopyView() = default;
    // The destination as the job takes it, without a separator at its end.
    virtual void showDestination(const std::string& folder) = 0;
    // The hidden list of file names moves to the row.
    virtual void moveTo(std::size_t row) = 0;
    // The list, the destination and the two buttons beside it do nothing while files are copied.
    virtual void lockControls(bool locked) = 0;
    // Shows what is copied now, at once.
    virtual void showProgress(const std::string& text) = 0;
    virtual void hideProgress() = 0;
    virtual void deselect(std::size_t row) = 0;
};

class CopyJob {
public:
    CopyJob(
        std::string appFolder, platform::Files& files, platform::Dialogs& dialogs, CopyView& view)
        : m_appFolder(std::move(appFolder)), m_files(files), m_dialogs(dialogs), m_view(view) {}

    // Copies the rows whose numbers are in `selected`, in that order, to a folder of the system.
    // Gives the number of runs that are there afterwards; an info file does not count. What fails
    // is told and passed over; a No to the question for a missing folder ends the job.
    int copy(const std::vector<core::RunIndexEntry>& rows, const std::vector<std::size_t>& selected,
        std::string_view destination);

private:
    enum class Course { goesOn, ends };
    enum class Copied { yes, no, kept };
    struct Outcome {
        Copied copied = Copied::no;
        Course course = Course::goesOn;
    };
    bool mayStart(const std::vector<std::size_t>& selected);
    std::string shownDestination() const;
    Course copyRun(const core::RunIndexEntry& run);
    Outcome copyFile(const std::string& name, bool mayBeMissing);
    platform::WriteResult put(const std::string& from, const std::string& to, Copied& copied);
    bool mayReplace(const std::string& path);
    Course told(platform::FileFailure failure, const std::string& source);

    std::string m_appFolder;
    platform::Files& m_files;
    platform::Dialogs& m_dialogs;
    CopyView& m_view;
    std::string m_destination;
    int m_count = 0;
};

// The path without one separator at its end; the root of a disk keeps it.
std::string withoutFinalSeparator(std::string_view path, const platform::Files& files);

// Makes a folder with all that lead to it. Failures are passed over; gives whether it is there in
// the end.
bool MakePath(std::string_view path, platform::Files& files);

} // namespace kvo::library
