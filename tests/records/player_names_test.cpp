#include "records/best_laps.h"
#include "records/player_names.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>

TEST(NamesFile, KeepsTwoNamesAndFallsBackForBoth) {
    using Names = std::array<std::string, 2>;
    Names const defaults{"Pixie", "Gadget"};
    std::string const path = pref_path("last_player_names.txt");
    std::filesystem::remove(path);
    EXPECT_EQ(load_player_names(), defaults);
    save_player_names("Zoë", "a name longer than what can be typed");
    EXPECT_EQ(read_file(path), "Zoë\na name longer than what can be typed\n");
    EXPECT_EQ(load_player_names(), (Names{"Zoë", "a name longer than what can be typed"}));
    write_file(path, "\t Ann B \r\n  Cid\t");
    EXPECT_EQ(load_player_names(), (Names{"Ann B", "Cid"}));
    for (char const* broken : {"", "Ann\n", "Ann\n \t\n", "\nCid\n"}) {
        write_file(path, broken);
        EXPECT_EQ(load_player_names(), defaults) << broken;
    }
    write_file(path, std::string(255, 'x') + "rest\nCid\n");
    EXPECT_EQ(load_player_names(), (Names{std::string(255, 'x'), "rest"}));
}
