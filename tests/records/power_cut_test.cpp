// Power cuts, as a disk sees them: names and contents reach it in any order unless they are
// flushed. While records are saved, every change of a name is written down here; then every state
// that a cut may leave is laid down and read.

#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/player_names.h"
#include "records/recovery.h"
#include "records/replace_file.h"
#include "support/files.h"
#include "support/records.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

using FileId = int; // 0 for no file
using NameTable = std::map<std::string, FileId>;

// A change that reaches the disk whole: for each name the files before and after.
using Change = std::map<std::string, std::pair<FileId, FileId>>;

// What is on the disk for sure, and what may be.
struct Disk {
    NameTable names;
    std::vector<Change> changes;
    std::set<FileId> flushed;
};

// The records as they have been promised to players.
struct Promises {
    std::map<int, std::vector<double>> laps; // by slot, in the order of saving
    std::vector<std::string> red_names;
    std::map<int, double> calm_laps; // as they were at the last calm moment
    std::size_t calm_names = 0;
    std::size_t made = 0; // counts promises and calm moments
};

struct State {
    std::map<std::string, std::string> files;
    Promises promises;
};

// How a file that was not flushed may be found.
std::string damaged(std::string const& bytes, int how) {
    std::string found = bytes;
    switch (how) {
    case 0:
        return found;
    case 1:
        return "";
    case 2:
        return found.substr(0, found.size() / 2);
    case 3:
        return found.substr(0, found.size() - std::min<std::size_t>(found.size(), 3));
    case 4:
        found.assign(found.size(), '\0');
        return found;
    case 5: // a middle sector is missing
        for (std::size_t i = 512; i < std::min<std::size_t>(found.size(), 1024); ++i) found[i] = 0;
        return found;
    default: // the last sector is missing
        for (std::size_t i = found.size() / 512 * 512; i < found.size(); ++i) found[i] = 0;
        return found;
    }
}
constexpr int DAMAGES = 7;
constexpr std::size_t MOST_IN_FULL = 9; // changes of which every set is tried

// How many of the other sets and damages are tried: 1 in the daily tests.
int effort() {
    char const* wanted = std::getenv("BRINDLE_EFFORT");
    return wanted != nullptr ? std::max(std::atoi(wanted), 1) : 1;
}

class DiskLog;
DiskLog* listening = nullptr;
bool exchange_is_known = true;

class DiskLog {
public:
    explicit DiskLog(fs::path folder) : folder_(std::move(folder)) {
        look();
        disk_.names = names_;
        disk_.changes.clear();
        for (auto const& [name, file] : names_) disk_.flushed.insert(file);
        listening = this;
    }
    ~DiskLog() { listening = nullptr; }
    DiskLog(DiskLog const&) = delete;
    DiskLog& operator=(DiskLog const&) = delete;

    // Looks at the folder: what has changed becomes one change, except new files, one each.
    void look() {
        NameTable now;
        std::map<ino_t, FileId> files;
        for (auto const& entry : fs::directory_iterator(folder_)) {
            struct stat status {};
            stat(entry.path().c_str(), &status);
            auto const known = files_.find(status.st_ino);
            FileId const file = known != files_.end() ? known->second : ++last_file_;
            files[status.st_ino] = file;
            contents_[file] = read_file(entry.path());
            now[entry.path().filename()] = file;
        }
        Change change;
        for (auto const& [name, file] : names_) {
            if (now[name] != file) change[name] = {file, now[name]};
        }
        for (auto const& [name, file] : now) {
            if (file == 0 || names_.contains(name)) continue;
            bool const is_new = files_.empty() || !was_there(file);
            if (is_new) {
                disk_.changes.push_back({{name, {0, file}}});
            } else {
                change[name] = {0, file};
            }
        }
        if (!change.empty()) disk_.changes.push_back(change);
        std::erase_if(now, [](auto const& entry) { return entry.second == 0; });
        names_ = now;
        files_ = files;
    }

    // `path` is flushed: until now a cut may have left any of these states.
    void flushed(std::string const& path) {
        look();
        note_states();
        if (fs::equivalent(path, folder_)) {
            disk_.names = names_;
            disk_.changes.clear();
        } else {
            disk_.flushed.insert(names_.at(fs::path(path).filename()));
        }
    }

    // The states that a cut may leave now. All sets of changes in which none is without those that
    // it builds on, up to a number; of damages, all the same and some at random.
    void note_states() {
        std::set<NameTable> seen;
        int const rounds =
            disk_.changes.size() <= MOST_IN_FULL ? 1 << disk_.changes.size() : 20 * effort();
        for (int round = 0; round < rounds; ++round) {
            NameTable const names = names_after(round);
            if (!seen.insert(names).second) continue;
            for (int damage = 0; damage < DAMAGES + 6 * effort(); ++damage) {
                note_state(names, damage);
            }
        }
    }

    Promises promises;
    std::vector<State> states;

private:
    bool was_there(FileId file) const {
        return std::any_of(files_.begin(), files_.end(),
                           [file](auto const& entry) { return entry.second == file; });
    }

    // Few changes: each set by its bits. Many: at random.
    NameTable names_after(int round) {
        NameTable names = disk_.names;
        auto const bits =
            disk_.changes.size() <= MOST_IN_FULL ? static_cast<std::uint64_t>(round) : random_();
        std::set<std::string>
            waiting; // names of which a change is not on the disk: no later one is
        for (std::size_t i = 0; i < disk_.changes.size(); ++i) {
            Change const& change = disk_.changes[i];
            bool const possible =
                std::none_of(change.begin(), change.end(),
                             [&](auto const& entry) { return waiting.contains(entry.first); });
            bool const happens = possible && (bits >> (i % 64) & 1U) != 0;
            for (auto const& [name, files] : change) {
                if (happens) {
                    names[name] = files.second;
                } else {
                    waiting.insert(name);
                }
            }
        }
        std::erase_if(names, [](auto const& entry) { return entry.second == 0; });
        return names;
    }

    void note_state(NameTable const& names, int damage) {
        State state{{}, promises};
        for (auto const& [name, file] : names) {
            int const how = disk_.flushed.contains(file) ? 0
                            : damage < DAMAGES           ? damage
                                                         : static_cast<int>(random_() % DAMAGES);
            state.files[name] = damaged(contents_[file], how);
        }
        std::size_t key = promises.made;
        for (auto const& [name, bytes] : state.files) {
            key =
                (key * 31 + std::hash<std::string>()(name)) * 31 + std::hash<std::string>()(bytes);
        }
        if (noted_.insert(key).second) {
            states.push_back(std::move(state));
        }
    }

    fs::path folder_;
    NameTable names_;
    std::map<ino_t, FileId> files_;
    std::map<FileId, std::string> contents_;
    FileId last_file_ = 0;
    Disk disk_;
    std::mt19937_64 random_;
    std::set<std::size_t> noted_;
};

// Between what the game asks of the system and the system.
template <typename Call>
auto watched(Call const& call) {
    DiskLog* const log = std::exchange(listening, nullptr);
    if (log != nullptr) log->look();
    auto const result = call();
    if (log != nullptr) log->look();
    listening = log;
    return result;
}

template <typename Function>
Function* original(char const* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {
int rename(char const* from, char const* to) noexcept {
    return watched([&] { return original<int(char const*, char const*)>("rename")(from, to); });
}
int renameat2(int from_dir, char const* from, int to_dir, char const* to, unsigned flags) noexcept {
    if (!exchange_is_known) {
        errno = EINVAL;
        return -1;
    }
    return watched([&] {
        return original<int(int, char const*, int, char const*, unsigned)>("renameat2")(
            from_dir, from, to_dir, to, flags);
    });
}
int remove(char const* path) noexcept {
    return watched([&] { return original<int(char const*)>("remove")(path); });
}
int fsync(int file) {
    if (listening != nullptr) {
        DiskLog* const log = std::exchange(listening, nullptr);
        log->flushed(fs::read_symlink("/proc/self/fd/" + std::to_string(file)));
        listening = log;
    }
    return 0; // no test waits for the disk
}
}

namespace {

constexpr std::size_t FRAMES = 20;

std::string ghost_name(int slot) {
    return "Ann.track" + std::to_string(slot) + ".trace";
}

std::vector<CarState> lap_of(double seconds) {
    return std::vector<CarState>(FRAMES, {seconds, 2.0, 0.3, 1.0, 1.0, 0.3, true, false});
}

class PowerCut : public RecordsTest, public testing::WithParamInterface<bool> {
protected:
    PowerCut() { exchange_is_known = GetParam(); }
    ~PowerCut() override { exchange_is_known = true; }

    static void drive(DiskLog& log, int slot, double seconds) {
        log.promises.laps[slot].push_back(seconds);
        ++log.promises.made;
        std::string const ghost = ghost_name(slot);
        ASSERT_NE(record_best_lap("Ann", slot, seconds, ghost), 0);
        ASSERT_TRUE(save_ghost_trace(pref_path(ghost.c_str()), lap_of(seconds), 10));
    }
    static void leave_menu(DiskLog& log, std::string const& red) {
        log.promises.red_names.push_back(red);
        save_player_names(red, "Bo");
        come_to_rest(log);
    }
    static void come_to_rest(DiskLog& log) {
        flush_replaced_files();
        log.look();
        ++log.promises.made;
        for (auto const& [slot, laps] : log.promises.laps) {
            log.promises.calm_laps[slot] = laps.back();
        }
        log.promises.calm_names = log.promises.red_names.size();
    }

    void lay_down(State const& state) const {
        empty_folder();
        for (auto const& [name, bytes] : state.files) write_file(folder / name, bytes);
    }

    void expect_kept(Promises const& promised) const {
        BestLapTable table;
        load_best_lap_table(table);
        for (auto const& [slot, entry] : table["Ann"]) {
            auto const& laps = promised.laps.at(slot);
            ASSERT_NE(std::find(laps.begin(), laps.end(), entry.seconds), laps.end())
                << "nobody drove " << entry.seconds;
            ASSERT_EQ(entry.trace_file, ghost_name(slot));
        }
        for (auto const& [slot, seconds] : promised.calm_laps) {
            ASSERT_TRUE(table["Ann"].contains(slot));
            ASSERT_LE(table["Ann"][slot].seconds, seconds);
        }
        for (auto const& [slot, laps] : promised.laps) expect_ghost(promised, slot);
        auto const& names = promised.red_names;
        auto const from =
            names.begin() +
            std::max<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(promised.calm_names) - 1, 0);
        std::string const red = load_player_names()[0];
        bool const is_default = promised.calm_names == 0 && red == "Pixie";
        ASSERT_TRUE(is_default || std::find(from, names.end(), red) != names.end()) << red;
        for (auto const& entry : fs::directory_iterator(folder)) {
            ASSERT_EQ(replaced_by_neighbour(entry.path()), "");
        }
    }

    static void expect_ghost(Promises const& promised, int slot) {
        std::vector<CarState> frames;
        bool const loads = load_ghost_trace(pref_path(ghost_name(slot).c_str()), frames, nullptr);
        auto const calm = promised.calm_laps.find(slot);
        if (!loads) {
            ASSERT_EQ(calm, promised.calm_laps.end());
            return;
        }
        ASSERT_EQ(frames.size(), FRAMES);
        double const seconds = frames[0].x;
        auto const& laps = promised.laps.at(slot);
        ASSERT_NE(std::find(laps.begin(), laps.end(), seconds), laps.end());
        ASSERT_TRUE(calm == promised.calm_laps.end() || seconds <= calm->second);
        for (CarState const& frame : frames) {
            ASSERT_EQ(frame.x, seconds);
            ASSERT_EQ(frame.speed + frame.heading + frame.throttle, 1.6);
        }
    }

    // Reads all states; of every so many also those in which the reading itself is cut off.
    void expect_all_kept(std::vector<State> const& states, std::size_t again_every) {
        for (State const& state : states) {
            lay_down(state);
            std::vector<State> cut_again;
            if (++read_ % again_every == 0) {
                DiskLog log(folder);
                log.promises = state.promises;
                recover_records(pref_path(""));
                log.look();
                log.note_states();
                cut_again = std::move(log.states);
            } else {
                recover_records(pref_path(""));
            }
            expect_kept(state.promises);
            if (HasFatalFailure()) {
                for (auto const& [name, bytes] : state.files) {
                    ADD_FAILURE() << name << ": " << bytes.substr(0, 200);
                }
                return;
            }
            expect_all_kept(cut_again, again_every);
            if (HasFatalFailure()) return;
        }
    }

    std::size_t read_ = 0;
};

} // namespace

TEST_P(PowerCut, LosesNothingThatWasThereAtTheLastCalmMoment) {
    std::vector<State> states;
    {
        DiskLog log(folder);
        leave_menu(log, "Pixie Lou");
        drive(log, 1, 60.125);
        drive(log, 1, 59.5);
        come_to_rest(log);
        drive(log, 1, 58.0);
        drive(log, 2, 70.25);
        flush_a_step(); // a rest that is broken off
        drive(log, 1, 57.75);
        flush_a_step();
        flush_a_step();
        leave_menu(log, "Ann");
        for (int slot = 3; slot < 16; ++slot) { // a table of several sectors
            log.promises.laps[slot].push_back(40.0 + slot);
            ASSERT_NE(record_best_lap("Ann", slot, 40.0 + slot, ghost_name(slot)), 0);
        }
        log.note_states();
        states = std::move(log.states);
    }
    flush_replaced_files();
    expect_all_kept(states, 97);
    RecordProperty("states", static_cast<int>(read_));
    EXPECT_GT(read_, 1000U);
}

INSTANTIATE_TEST_SUITE_P(FileSystems, PowerCut, testing::Values(true, false),
                         [](auto const& run) { return run.param ? "Exchange" : "RenameOnly"; });
