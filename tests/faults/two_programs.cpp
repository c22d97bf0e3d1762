// Two programs work on one folder by turns, each with the lists that it has read some time ago:
// downloads, imports, new descriptions, deletes, notes, times and setups, in any order. Only the
// holder of the folder's lock writes the setup, and who takes it over reads the setup first.
#include "core/config.h"
#include "core/default_config.h"
#include "core/run_file.h"
#include "core/run_index.h"
#include "core/run_info.h"
#include "core/run_records.h"
#include "core/run_times.h"
#include "core/vehicle_setup.h"
#include "library/run_list.h"
#include "tests/faults/file_house.h"
#include "tests/faults/proof.h"
#include "tests/support/memory_files.h"

#include <array>
#include <random>

namespace kvo::faults {
namespace {

const std::string app = "/App";
constexpr int turns = 40;
constexpr int settings = 8; // analog names, one a setting

struct Program {
    core::AppConfig config;
    library::RunList list;
    std::string name;
};

// What the two have done, as the users remember it.
struct Memory {
    std::map<std::string, std::string> rows;  // by run
    std::map<std::string, std::string> notes; // by run
    std::map<int, int> times;                 // by key
    std::array<std::string, settings + 1> settingTexts;
    std::map<int, std::string> vehicle;
};

class Evening {
public:
    Evening(Proof& proof, std::mt19937& random, long number)
        : m_proof(proof), m_random(random), m_which("interleaving " + std::to_string(number)) {
        check(bool(core::SaveConfig(app, core::defaultConfig(), m_files)), "no start");
        for (Program& program : m_programs) {
            (void)core::LoadConfig(app, program.config, m_files);
            (void)program.list.read(app, m_files);
        }
    }

    void play() {
        for (int turn = 0; turn < turns; ++turn) {
            Program& program = m_programs[any(2)];
            if (any(4) == 0) (void)program.list.read(app, m_files);
            switch (any(8)) {
            case 0:
            case 1:
                download(program, any(3) == 0);
                break;
            case 2:
            case 3:
                describe(program);
                break;
            case 4:
                remove(program);
                break;
            case 5:
                saveNotes(program, any(2) == 0);
                break;
            case 6:
                saveSetting(program);
                break;
            default:
                saveVehicle();
                break;
            }
        }
        lookAtAll();
    }
    static inline long stale = 0; // setups that the other program had changed meanwhile

private:
    std::size_t any(std::size_t count) { return m_random() % count; }
    void check(bool holds, const std::string& what) { m_proof.check(holds, m_which + ": " + what); }
    std::string pathOf(const std::string& run) const { return app + "/Data/" + run; }
    std::string fresh(const char* what) { return what + std::to_string(++m_serial); }

    // Each run is of a day of its own, so that its times have a key of their own.
    void download(Program& program, bool import) {
        static const auto run = runOf(1);
        const int number = ++m_runs;
        const platform::DateTime moment{2026, 1 + number / 28, 1 + number % 28, 9, number, 0};
        const std::string name = core::runFileName(moment);
        const std::string text = core::runText(fresh("1 Run "), moment);
        run->path = pathOf(name);
        check(bool(core::SaveRun(*run, {{3, 5, 2, 1225}, text, program.config}, app, m_files)),
            "no run");
        const auto order = import ? core::IndexOrder::sorted : core::IndexOrder::asItIs;
        const auto entry = core::indexEntryOf(run->path, text);
        check(bool(core::AddRunToIndex(app, entry, order, m_files)), "no row");
        m_memory.rows[name] = entry.Description;
    }

    // False where the program knows no run.
    bool choose(Program& program) {
        const int rows = program.list.rowCount();
        if (rows == 0) return false;
        program.list.choose(static_cast<int>(any(static_cast<std::size_t>(rows))));
        return true;
    }

    void describe(Program& program) {
        if (!choose(program)) return;
        const auto before = program.list.chosen();
        const bool there = m_memory.rows.contains(before.FileName) &&
                           m_memory.rows[before.FileName] == before.Description;
        core::OpenRun none;
        const auto done = program.list.renameChosen(app, fresh("2 Text "), none, m_files);
        check(done.done == there, there ? "a description is refused" : "a stale row is written");
        if (there) m_memory.rows[before.FileName] = program.list.chosen().Description;
    }

    void remove(Program& program) {
        if (!choose(program)) return;
        const std::string run = program.list.chosen().FileName;
        check(bool(program.list.deleteChosen(app, m_files)), "a delete is refused");
        m_memory.rows.erase(run);
        m_memory.notes.erase(run);
    }

    void saveNotes(Program& program, bool withTimes) {
        if (!choose(program)) return;
        const std::string run = program.list.chosen().FileName;
        core::RunInfo info;
        info.Info_Text = fresh("Notes ");
        if (withTimes) info.Text_ET = std::to_string(any(9) + 1);
        const std::string path = pathOf(run);
        const auto saved = core::SaveRunInfo(app, core::infoFilePath(path), path, info, m_files);
        check(saved.notesDone, "notes are refused");
        const bool there = m_memory.rows.contains(run);
        check(saved.done == (there || !withTimes), "times of a run that is there are refused");
        m_memory.notes[run] = info.Info_Text;
        if (there && withTimes)
            m_memory.times[core::RunDateKey(m_memory.rows[run])] = (info.Text_ET[0] - '0') * 100;
    }

    void saveSetting(Program& program) {
        if (m_holder != &program) {
            const core::AppConfig held = program.config;
            (void)core::LoadConfig(app, program.config, m_files);
            if (!(held == program.config)) ++stale;
            m_holder = &program;
        }
        const auto which = static_cast<int>(any(settings)) + 1;
        std::string text = fresh("S");
        text.resize(8, ' ');
        program.config.AnalogName[which] = text;
        check(bool(core::SaveConfig(app, program.config, m_files)), "a setup is refused");
        m_memory.settingTexts[static_cast<std::size_t>(which)] = text;
    }

    // The form reads the file when it opens.
    void saveVehicle() {
        auto setup = core::LoadVehicleSetup(app, m_files);
        const auto line = static_cast<int>(any(25)) + 1;
        setup[line] = {"Line", fresh("V")};
        check(bool(core::SaveVehicleSetup(app, setup, m_files)), "a vehicle's setup is refused");
        m_memory.vehicle[line] = setup[line].Value;
    }

    void lookAtAll() {
        const auto index = core::readRunIndex(core::indexPath(app, m_files), m_files);
        check(index.size() == m_memory.rows.size(), "the list has " + std::to_string(index.size()) +
                                                        " rows for " +
                                                        std::to_string(m_memory.rows.size()));
        for (const auto& row : index)
            check(m_memory.rows.contains(row.FileName) &&
                      m_memory.rows[row.FileName] == row.Description,
                row.FileName + " is described as " + row.Description);
        for (const auto& [run, description] : m_memory.rows) lookAtRun(run, description);
        for (const auto& [run, notes] : m_memory.notes)
            check(
                core::LoadRunInfo(core::infoFilePath(pathOf(run)), {}, m_files).Info_Text == notes,
                "notes of " + run);
        lookAtTimes();
        core::AppConfig config;
        (void)core::LoadConfig(app, config, m_files);
        for (int i = 1; i <= settings; ++i) {
            const std::string& text = m_memory.settingTexts[static_cast<std::size_t>(i)];
            check(text.empty() || config.AnalogName[i] == text, "setting " + std::to_string(i));
        }
        const auto vehicle = core::LoadVehicleSetup(app, m_files);
        for (const auto& [line, value] : m_memory.vehicle)
            check(vehicle[line].Value == value, "line " + std::to_string(line));
    }

    void lookAtRun(const std::string& run, const std::string& description) {
        const auto file = m_files.read(pathOf(run));
        if (!file) return check(false, run + " is lost");
        const auto line = core::decodeHeaderLine(core::runRecord(*file, 1)).value_or("");
        const std::string title = description.substr(description.find(':') + 2);
        check(line.find(title) != std::string::npos, run + " says " + line);
        core::RunSample row;
        check(core::decode(core::runRecord(*file, 1002), row) && row.EngineRpm == 2000,
            run + " has other rows");
    }

    // The newest 24 of them at least.
    void lookAtTimes() {
        const auto table = core::LoadTimesTable(app, m_files);
        check(table.RunTimesCount - 1 == static_cast<int>(m_memory.times.size()), "rows of times");
        int at = 0;
        for (const auto& [key, time] : m_memory.times)
            if (++at <= 25)
                check(table.entries[at].Key == key && table.entries[at].TimeET == time,
                    "times " + std::to_string(at));
    }

    Proof& m_proof;
    std::mt19937& m_random;
    std::string m_which;
    testing::MemoryFiles m_files;
    std::array<Program, 2> m_programs;
    const Program* m_holder = nullptr;
    Memory m_memory;
    int m_runs = 0;
    int m_serial = 0;
};

} // namespace
} // namespace kvo::faults

int main(int argc, char* argv[]) {
    using namespace kvo::faults;
    const Options options = optionsOf(argc, argv);
    Proof proof(options);
    std::mt19937 random(options.seed);
    const long count = options.count > 0 ? static_cast<long>(options.count) : 300;
    for (long i = 0; i < count; ++i) Evening(proof, random, i).play();
    return proof.end("two programs on one folder, " + std::to_string(turns) + " turns each", count,
        "interleavings", std::to_string(Evening::stale) + " stale setups read anew");
}
