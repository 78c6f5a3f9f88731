#include "records/best_laps.h"
#include "records/printed.h"
#include "support/files.h"
#include "support/records.h"
#include "support/said.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

std::string table_path() {
    return pref_path("best_lap_times.txt");
}

using BestLaps = RecordsTest;

BestLapTable load(std::string const& text) {
    write_file(table_path(), text);
    BestLapTable table;
    EXPECT_TRUE(load_best_lap_table(table));
    return table;
}

} // namespace

TEST_F(BestLaps, RanksPersonalBestsAndLapRecords) {
    BestLapTable none;
    EXPECT_FALSE(load_best_lap_table(none));
    EXPECT_EQ(record_best_lap("", 1, 9.0, "x"), 0);
    EXPECT_EQ(record_best_lap("Pixie", 0, 9.0, "x"), 0);
    EXPECT_FALSE(fs::exists(table_path()));

    EXPECT_EQ(record_best_lap("Pixie", 1, 40.982, "Pixie.coast.trace"), 2);
    EXPECT_EQ(record_best_lap("Gadget", 1, 41.25, "Gadget.coast.trace"), 1);
    EXPECT_EQ(record_best_lap("Gadget", 3, 63.118, ""), 2);
    std::string const table = "[Gadget]\n1: 41.250 Gadget.coast.trace\n3: 63.118\n\n"
                              "[Pixie]\n1: 40.982 Pixie.coast.trace\n";
    EXPECT_EQ(read_file(table_path()), table);

    EXPECT_EQ(record_best_lap("Gadget", 1, 41.25, "new"), 0) << "an equal time is no record";
    EXPECT_EQ(record_best_lap("Gadget", 1, 42.0, "new"), 0);
    EXPECT_EQ(read_file(table_path()), table);
    EXPECT_EQ(record_best_lap("Gadget", 1, 40.982, ""), 1) << "another's equal time denies it";
    EXPECT_EQ(best_lap_trace("Gadget", 1), "");
    EXPECT_EQ(record_best_lap("Gadget", 1, 40.981, "g"), 2);
    EXPECT_EQ(best_lap_trace("Gadget", 1), "g");
    EXPECT_EQ(record_best_lap("gadget", 1, 40.981, ""), 1) << "case makes another player";
    EXPECT_EQ(best_lap_trace("Gadget", 2) + best_lap_trace("Nobody", 1), "");
}

TEST_F(BestLaps, TellTheHolderOfEverySlot) {
    std::map<int, BestLap> best{{7, {"old", 1.0}}};
    EXPECT_FALSE(load_best_laps(best));
    EXPECT_TRUE(best.empty());
    write_file(table_path(), "[B]\n1: 30\n2: 20.5\n[A]\n1: 30\n2: 21\n[C]\n3: inf\n1: 30.001\n");
    EXPECT_TRUE(load_best_laps(best));
    std::string holders;
    for (auto const& [slot, lap] : best) {
        holders += printed("%d %s %g, ", slot, lap.holder.c_str(), lap.seconds);
    }
    EXPECT_EQ(holders, "1 A 30, 2 B 20.5, 3 C inf, ");
}

TEST_F(BestLaps, KeepWhatCanBeReadOfAFileEditedByHand) {
    BestLapTable const table = load("1: 10.0 before.any.section\n"
                                    "  [ Ann Lee ]  1: 3\n"
                                    "nonsense\n"
                                    "2 : 50\n"
                                    ": 50\n"
                                    "3:\n"
                                    " 4:50.5   ann.trace   and more\r\n"
                                    "5: 1e1\n"
                                    "5: 12.25\n"
                                    "6: nan lost.trace\n"
                                    "-3: -2\n"
                                    "4294967300: 1\n"
                                    "99999999999999999999: 1\n"
                                    "[]\n"
                                    "7: 70\n"
                                    "[Bo]b]\n"
                                    "1: 9\n"
                                    "[Nobody]\n"
                                    "[No end\n"
                                    "1: 8");
    // Written again, what was read shows byte for byte.
    ASSERT_TRUE(save_best_lap_table(table));
    EXPECT_EQ(read_file(table_path()),
              "[ Ann Lee ]\n-3: -2.000\n4: 50.500 ann.trace\n5: 12.250\n7: 70.000\n\n"
              "[Bo]\n1: 9.000\n\n[No end\n]\n1: 8.000\n");
}

TEST_F(BestLaps, SurviveWhatTheFileCannotHold) {
    EXPECT_EQ(record_best_lap("Pixie", 1, 40.0, "p"), 2);
    for (std::string const& name : {"a]b"s, "c\nd"s, std::string(300, 'x')}) {
        EXPECT_EQ(record_best_lap(name, 1, 50.0, std::string(200, 't')), 1);
    }
    EXPECT_EQ(record_best_lap("Huge", 2, 1e308, "h"), 2);
    BestLapTable table;
    ASSERT_TRUE(load_best_lap_table(table));
    EXPECT_EQ(table.at("Pixie").at(1).trace_file, "p");
    for (std::string const& name : {"a"s, "c\n"s, std::string(127, 'x')}) {
        EXPECT_EQ(table.at(name).at(1).seconds, 50.0);
    }
    EXPECT_EQ(table.at("a").at(1).trace_file, std::string(159, 't'));
    // A line of more than 255 bytes is read as several; the second here is an entry of its own.
    BestLapTable const cut = load("[A]\n1: 5 t" + std::string(249, ' ') + "2: 6 u\n");
    EXPECT_EQ(cut.at("A").at(1).trace_file, "t");
    EXPECT_EQ(cut.at("A").at(2).trace_file, "u");
}

TEST_F(BestLaps, SayWhenTheyCannotBeWritten) {
    fs::create_directory(table_path());
    std::string const said = errors_of([] {
        EXPECT_FALSE(save_best_lap_table({{"A", {{1, {2.0, ""}}}}}));
        EXPECT_EQ(record_best_lap("A", 1, 2.0, ""), 2) << "the rank stands";
    });
    EXPECT_EQ(said, "could not write best_lap_times.txt\ncould not write best_lap_times.txt\n");
    EXPECT_TRUE(fs::is_directory(table_path()));
}
