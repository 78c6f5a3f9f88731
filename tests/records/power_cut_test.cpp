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
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

using FileId = int; // 0 for no file
using NameTable = std::map<std::string, FileId>;

// What is on the disk for sure, and the changes that may be, each whole: its names with their new
// files.
struct Disk {
    NameTable names;
    std::vector<NameTable> changes;
    std::set<FileId> flushed;
};

// What has been saved in one place, in order, and how much of it by the last calm moment.
template <typename Value>
struct Saved {
    std::vector<Value> values;
    std::ptrdiff_t calm = 0;

    // What a player may find there: nothing that is older than the calm moment.
    [[nodiscard]] bool allows(std::optional<Value> const& found) const {
        if (!found) return calm == 0;
        auto const oldest = values.begin() + std::max<std::ptrdiff_t>(calm - 1, 0);
        return std::find(oldest, values.end(), *found) != values.end();
    }
};

// The records as they have been promised to players.
struct Promises {
    std::map<int, Saved<double>> laps;    // by slot
    Saved<std::string> red{{"Pixie"}, 1}; // who is there before any name is saved
    std::size_t made = 0;                 // counts promises and calm moments
};

using Files = std::map<std::string, std::string>; // names and bytes
struct State {
    Files files;
    Promises promises;
};

constexpr int DAMAGES = 7;

// How a file that was not flushed may be found.
std::string damaged(std::string bytes, int how) {
    struct Damage {
        std::size_t length, zero_from, zero_to;
    };
    std::size_t const n = bytes.size();
    std::array<Damage, DAMAGES> const damages{{{n, n, n},
                                               {0, n, n},
                                               {n / 2, n, n},
                                               {n - std::min<std::size_t>(n, 3), n, n},
                                               {n, 0, n},
                                               {n, 512, 1024}, // a middle sector is missing
                                               {n, n / 512 * 512, n}}}; // the last one is
    auto const [length, from, to] = damages.at(static_cast<std::size_t>(how));
    for (std::size_t i = from; i < std::min(n, to); ++i) bytes[i] = '\0';
    return bytes.substr(0, length);
}

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
        disk_ = {names_, {}, {}};
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
        FileId const last_known = last_file_;
        for (auto const& entry : fs::directory_iterator(folder_)) {
            struct stat status {};
            stat(entry.path().c_str(), &status);
            auto const known = files_.find(status.st_ino);
            FileId const file = known != files_.end() ? known->second : ++last_file_;
            files[status.st_ino] = file;
            contents_[file] = read_file(entry.path());
            now[entry.path().filename()] = file;
        }
        NameTable change;
        for (auto const& [name, file] : names_) {
            if (now[name] != file) change[name] = now[name];
        }
        for (auto const& [name, file] : now) {
            if (names_.contains(name)) continue;
            if (file > last_known) disk_.changes.push_back({{name, file}});
            if (file <= last_known) change[name] = file;
        }
        if (!change.empty()) disk_.changes.push_back(change);
        names_ = without_missing(now);
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
    static NameTable without_missing(NameTable names) {
        std::erase_if(names, [](auto const& entry) { return entry.second == 0; });
        return names;
    }

    // Few changes: each set by its bits. Many: at random.
    NameTable names_after(int round) {
        NameTable names = disk_.names;
        auto const bits =
            disk_.changes.size() <= MOST_IN_FULL ? static_cast<std::uint64_t>(round) : random_();
        std::set<std::string> waiting; // names without a change of theirs: no later one happens
        for (std::size_t i = 0; i < disk_.changes.size(); ++i) {
            bool happens = (bits >> (i % 64) & 1U) != 0;
            for (auto const& [name, file] : disk_.changes[i]) {
                happens = happens && !waiting.contains(name);
            }
            for (auto const& [name, file] : disk_.changes[i]) {
                if (happens) names[name] = file;
                if (!happens) waiting.insert(name);
            }
        }
        return without_missing(names);
    }

    void note_state(NameTable const& names, int damage) {
        State state{{}, promises};
        for (auto const& [name, file] : names) {
            int const how = disk_.flushed.contains(file) ? 0
                            : damage < DAMAGES           ? damage
                                                         : static_cast<int>(random_() % DAMAGES);
            state.files[name] = damaged(contents_[file], how);
        }
        if (noted_.insert({promises.made, state.files}).second) states.push_back(std::move(state));
    }

    fs::path folder_;
    NameTable names_;
    std::map<ino_t, FileId> files_;
    std::map<FileId, std::string> contents_;
    FileId last_file_ = 0;
    Disk disk_;
    std::mt19937_64 random_;
    std::set<std::pair<std::size_t, Files>> noted_;
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

struct PowerCut : RecordsTest, testing::WithParamInterface<bool> {
    PowerCut() { exchange_is_known = GetParam(); }
    ~PowerCut() override { exchange_is_known = true; }

    static void drive(DiskLog& log, int slot, double seconds) {
        promise(log, slot, seconds);
        std::string const ghost = pref_path(ghost_name(slot).c_str());
        ASSERT_TRUE(save_ghost_trace(ghost, lap_of(seconds), 10));
    }
    static void promise(DiskLog& log, int slot, double seconds) {
        log.promises.laps[slot].values.push_back(seconds);
        ++log.promises.made;
        ASSERT_NE(record_best_lap("Ann", slot, seconds, ghost_name(slot)), 0);
    }
    static void leave_menu(DiskLog& log, std::string const& red) {
        log.promises.red.values.push_back(red);
        save_player_names(red, "Bo");
        come_to_rest(log);
    }
    static void come_to_rest(DiskLog& log) {
        flush_replaced_files();
        log.look();
        ++log.promises.made;
        for (auto& [slot, lap] : log.promises.laps) lap.calm = std::ssize(lap.values);
        log.promises.red.calm = std::ssize(log.promises.red.values);
    }

    void lay_down(State const& state) const {
        empty_folder();
        for (auto const& [name, bytes] : state.files) write_file(folder / name, bytes);
    }

    void expect_kept(Promises const& promised) const {
        BestLapTable table;
        load_best_lap_table(table);
        for (auto const& [slot, entry] : table["Ann"]) {
            ASSERT_TRUE(promised.laps.contains(slot));
            ASSERT_EQ(entry.trace_file, ghost_name(slot));
        }
        for (auto const& [slot, lap] : promised.laps) {
            auto const entry = table["Ann"].find(slot);
            bool const is_there = entry != table["Ann"].end();
            ASSERT_TRUE(lap.allows(is_there ? std::optional(entry->second.seconds) : std::nullopt));
            ASSERT_TRUE(lap.allows(ghost_seconds(slot)));
        }
        ASSERT_TRUE(promised.red.allows(load_player_names()[0])) << load_player_names()[0];
        for (auto const& entry : fs::directory_iterator(folder)) {
            ASSERT_EQ(replaced_by_neighbour(entry.path()), "");
        }
    }

    // Whose ghost it is, which must be of one lap alone.
    static std::optional<double> ghost_seconds(int slot) {
        std::vector<CarState> frames;
        std::string const path = pref_path(ghost_name(slot).c_str());
        if (!load_ghost_trace(path, frames, nullptr)) return std::nullopt;
        EXPECT_EQ(frames.size(), FRAMES);
        for (CarState const& frame : frames) {
            EXPECT_EQ(frame.x, frames[0].x);
            EXPECT_EQ(frame.speed + frame.heading + frame.throttle, 1.6);
        }
        return frames.empty() ? 0.0 : frames[0].x;
    }

    // Reads all states; of every so many also those in which the reading itself is cut off.
    void expect_all_kept(std::vector<State> const& states, std::size_t again_every) {
        for (State const& state : states) {
            lay_down(state);
            std::optional<DiskLog> log;
            if (++read_ % again_every == 0) log.emplace(folder).promises = state.promises;
            recover_records(pref_path(""));
            std::vector<State> cut_again;
            if (log) {
                log->look();
                log->note_states();
                cut_again = std::move(log->states);
                log.reset();
            }
            expect_kept(state.promises);
            if (HasFailure()) {
                for (auto const& [name, bytes] : state.files) {
                    ADD_FAILURE() << name << ": " << bytes.substr(0, 200);
                }
                return;
            }
            expect_all_kept(cut_again, again_every);
            if (HasFailure()) return;
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
        for (int slot = 3; slot < 16; ++slot) promise(log, slot, 40.0 + slot); // several sectors
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
