#include "records/best_laps.h"
#include "support/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

std::string table_path() {
    return pref_path("best_lap_times.txt");
}

class BestLaps : public testing::Test {
protected:
    void SetUp() override { fs::remove_all(table_path()); }
    void TearDown() override { fs::remove_all(table_path()); }
};

BestLapTable load(std::string const& text) {
    write_file(table_path(), text);
    BestLapTable table;
    EXPECT_TRUE(load_best_lap_table(table));
    return table;
}

} // namespace

TEST_F(BestLaps, StandInThePreferenceFolder) {
    EXPECT_EQ(fs::path(table_path()).parent_path().filename(), "BrindleRun");
    EXPECT_TRUE(fs::is_directory(fs::path(table_path()).parent_path()));
}

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
    EXPECT_EQ(best_lap_trace("Gadget", 2), "");
    EXPECT_EQ(best_lap_trace("Nobody", 1), "");
}

TEST_F(BestLaps, TellTheHolderOfEverySlot) {
    std::map<int, BestLap> best{{7, {"old", 1.0}}};
    EXPECT_FALSE(load_best_laps(best));
    EXPECT_TRUE(best.empty());
    write_file(table_path(), "[B]\n1: 30\n2: 20.5\n[A]\n1: 30\n2: 21\n[C]\n3: inf\n1: 30.001\n");
    EXPECT_TRUE(load_best_laps(best));
    ASSERT_EQ(best.size(), 3U);
    EXPECT_EQ(best[1].holder, "A");
    EXPECT_EQ(best[2].holder, "B");
    EXPECT_EQ(best[2].seconds, 20.5);
    EXPECT_EQ(best[3].holder, "C");
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
    std::vector<std::string> names;
    for (auto const& [name, entries] : table) names.push_back(name);
    EXPECT_THAT(names, ElementsAre(" Ann Lee ", "Bo", "No end\n"));
    auto const& ann = table.at(" Ann Lee ");
    std::vector<int> slots;
    for (auto const& [slot, entry] : ann) slots.push_back(slot);
    EXPECT_THAT(slots, ElementsAre(-3, 4, 5, 7));
    EXPECT_EQ(ann.at(4).seconds, 50.5);
    EXPECT_EQ(ann.at(4).trace_file, "ann.trace");
    EXPECT_EQ(ann.at(5).seconds, 12.25);
    EXPECT_EQ(table.at("No end\n").at(1).seconds, 8.0);

    ASSERT_TRUE(save_best_lap_table(table));
    BestLapTable again;
    ASSERT_TRUE(load_best_lap_table(again));
    EXPECT_EQ(again.at("No end\n").at(1).seconds, 8.0);
    EXPECT_EQ(again.size(), 3U);
}

TEST_F(BestLaps, CutWhatIsLongerThanAnyNameTyped) {
    std::string const name(200, 'n');
    std::string const trace(200, 't');
    BestLapTable const table = load("[" + name + "]\n1: 5 " + trace + "\n");
    ASSERT_TRUE(table.contains(std::string(127, 'n')));
    EXPECT_EQ(table.begin()->second.at(1).trace_file, std::string(159, 't'));

    // A line of more than 255 bytes is read as several; the second here is an entry of its own.
    std::string const padding(255 - std::string("1: 5 t").size(), ' ');
    BestLapTable const cut = load("[A]\n1: 5 t" + padding + "2: 6 u\n");
    EXPECT_EQ(cut.at("A").at(1).trace_file, "t");
    EXPECT_EQ(cut.at("A").at(2).trace_file, "u");
}

TEST_F(BestLaps, SurviveNamesAndTimesThatTheFileCannotHold) {
    EXPECT_EQ(record_best_lap("Pixie", 1, 40.0, "p"), 2);
    EXPECT_EQ(record_best_lap("a]b", 1, 50.0, ""), 1);
    EXPECT_EQ(record_best_lap("c\nd", 1, 51.0, ""), 1);
    EXPECT_EQ(record_best_lap(std::string(300, 'x'), 1, 52.0, ""), 1);
    EXPECT_EQ(record_best_lap("Huge", 2, 1e308, "h"), 2);
    BestLapTable table;
    ASSERT_TRUE(load_best_lap_table(table));
    EXPECT_EQ(table.at("Pixie").at(1).seconds, 40.0);
    EXPECT_EQ(table.at("a").at(1).seconds, 50.0);
    EXPECT_EQ(table.at("c\n").at(1).seconds, 51.0);
    EXPECT_EQ(table.at(std::string(127, 'x')).at(1).seconds, 52.0);
    EXPECT_EQ(best_lap_trace("Pixie", 1), "p");
}

TEST_F(BestLaps, TakeNoHarmFromNoise) {
    std::mt19937 random(20);
    std::string const useful = "[]0123456789: .\n\t-+einfxp";
    for (int round = 0; round < 200; ++round) {
        std::string noise;
        while (noise.size() < 2000) {
            bool const any = random() % 8 == 0; // NULs among them
            noise += any ? static_cast<char>(random()) : useful[random() % useful.size()];
        }
        BestLapTable const table = load("[Old]\n1: 60.5 o\n\n" + noise + "\n[Old]\n1: 60.5 o\n");
        EXPECT_EQ(table.at("Old").at(1).seconds, 60.5);
        EXPECT_GE(record_best_lap("Old", 1, 60.0, "n"), 1);
        EXPECT_EQ(best_lap_trace("Old", 1), "n");
        std::map<int, BestLap> best;
        EXPECT_TRUE(load_best_laps(best));
        for (auto const& [slot, lap] : best) EXPECT_FALSE(std::isnan(lap.seconds));
    }
}

TEST_F(BestLaps, SayWhenTheyCannotBeWritten) {
    fs::create_directory(table_path());
    CaptureStderr();
    EXPECT_FALSE(save_best_lap_table({{"A", {{1, {2.0, ""}}}}}));
    EXPECT_EQ(GetCapturedStderr(), "could not write best_lap_times.txt\n");
    CaptureStderr();
    EXPECT_EQ(record_best_lap("A", 1, 2.0, ""), 2) << "the rank stands";
    EXPECT_EQ(GetCapturedStderr(), "could not write best_lap_times.txt\n");
    EXPECT_TRUE(fs::is_directory(table_path()));
}
