#pragma once
// What is known of the runs of the list beyond their titles: times and notes, from their info
// files. A file is read when its row comes into view, and those of all rows only where a filter or
// an order needs them; a little at a time, so that nobody waits.
#include "core/run_index.h"
#include "core/run_info.h"
#include "platform/files.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace kvo::library {

struct RunFact {
    std::string Text_ET; // as typed
    std::string Text_Mph;
    std::string notes; // folded, for the filter
};

class RunFacts {
public:
    // The rows from here on, which must outlive this or be set anew when they change. What is known
    // of a file stays known.
    void setRows(const std::vector<core::RunIndexEntry>& rows, const std::string& appFolder);
    // Nothing is known any more: files may have been written since.
    void forget();

    // Null where the row was not read yet.
    const RunFact* known(int row) const;
    // The row has come into view. Of many such rows the last ones are read first, and the first
    // ones may be left out: they have gone out of view long ago.
    void want(int row);
    // Whether all rows are wanted, behind those in view.
    void wantAll(bool on) { m_all = on; }

    // Whether any row that is wanted was not read yet.
    bool wantsMore() const;
    bool wantsRowInView() const { return !m_inView.empty(); }
    // Reads `count` files at most of those that are wanted. The rows that became known.
    std::vector<int> read(int count, const platform::Files& files);
    // Rows that were read, and whether these are all.
    int readCount() const { return m_readCount; }
    bool allRead() const { return m_readCount == static_cast<int>(m_ofRow.size()); }

private:
    void take(int row, const platform::Files& files);
    int nextWanted();

    const std::vector<core::RunIndexEntry>* m_rows = nullptr;
    std::string m_appFolder;
    std::vector<RunFact> m_facts;
    std::unordered_map<std::string, std::int32_t> m_ofFile; // place in m_facts
    std::vector<std::int32_t> m_ofRow;                      // likewise, -1 while it is not known
    std::vector<int> m_inView;
    bool m_all = false;
    int m_next = 0; // of all rows; those in front of it are known
    int m_readCount = 0;
};

// What a preview says of a run under its picture, a line each: the times and speeds that are known,
// and the first line of the notes.
std::vector<std::string> previewLines(const core::RunNotes& notes);

} // namespace kvo::library
