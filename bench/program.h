#pragma once
// The program's services on a scratch folder, with runs of all channels as if they had been
// downloaded there, for as long as the object lives.
#include "bench/run.h"
#include "bench/silent_dialogs.h"
#include "platform/os/os_files.h"

namespace kvo::bench {

class Program {
public:
    // The newest run is in the state, two are in the index.
    Program();
    // Unloads the forms too.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    platform::Files& files() { return m_files; }
    const std::string& folder() const { return m_folder.path(); }

private:
    ScratchFolder m_folder;
    platform_os::OsFiles m_files;
    SilentDialogs m_dialogs;
};

// Ends the measuring where a write has failed.
void demand(const platform::WriteResult& result);

} // namespace kvo::bench
