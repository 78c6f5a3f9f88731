#include "records/best_laps.h"
#include "screens/name_field.h"
#include "support/files.h"

#include <gtest/gtest.h>

namespace {

NameField field_of(std::string text) {
    NameField field;
    field.text = std::move(text);
    field.cursor = static_cast<int>(field.text.size());
    return field;
}

bool press(NameField& field, SDL_Keycode key, int mod = KMOD_NONE) {
    SDL_Keysym const sym{SDL_SCANCODE_UNKNOWN, key, static_cast<std::uint16_t>(mod), 0};
    return edit_field(field, sym);
}

} // namespace

TEST(NameField, CaretStepsOverWholeCodePoints) {
    NameField field = field_of("aä€😀");
    std::vector<int> stops;
    for (int i = 0; i < 5; ++i) {
        stops.push_back(field.cursor);
        press(field, SDLK_LEFT);
    }
    EXPECT_EQ(stops, (std::vector<int>{10, 6, 3, 1, 0}));
    EXPECT_EQ(field.cursor, 0);
    press(field, SDLK_RIGHT);
    press(field, SDLK_RIGHT);
    EXPECT_EQ(field.cursor, 3);
    press(field, SDLK_END);
    press(field, SDLK_RIGHT);
    EXPECT_EQ(field.cursor, 10);
}

TEST(NameField, DeletesWholeCodePointsOnEitherSide) {
    NameField field = field_of("aä€b");
    press(field, SDLK_DELETE);
    EXPECT_EQ(field.text, "aä€b");
    press(field, SDLK_LEFT);
    press(field, SDLK_BACKSPACE);
    EXPECT_EQ(field.text, "aäb");
    EXPECT_EQ(field.cursor, 3);
    press(field, SDLK_HOME);
    press(field, SDLK_BACKSPACE);
    EXPECT_EQ(field.text, "aäb");
    press(field, SDLK_RIGHT);
    press(field, SDLK_DELETE);
    EXPECT_EQ(field.text, "ab");
    EXPECT_EQ(field.cursor, 1);
}

TEST(NameField, ControlClearsAndPlainLettersEditNothing) {
    for (SDL_Keycode const key : {SDLK_BACKSPACE, SDLK_k}) {
        NameField field = field_of("Pixie");
        EXPECT_TRUE(press(field, key, KMOD_RCTRL));
        EXPECT_EQ(field.text, "");
        EXPECT_EQ(field.cursor, 0);
    }
    NameField field = field_of("Pixie");
    EXPECT_FALSE(press(field, SDLK_k));
    EXPECT_FALSE(press(field, SDLK_p));
    EXPECT_EQ(field.text, "Pixie");
}

TEST(NameField, TakesFourteenCodePointsWhateverTheirLength) {
    NameField field = field_of("äääääääääääää"); // 13
    EXPECT_FALSE(insert_text(field, "xy"));
    EXPECT_TRUE(insert_text(field, "€"));
    EXPECT_FALSE(insert_text(field, "x"));
    EXPECT_EQ(field.cursor, 29);
    field = field_of("ac");
    press(field, SDLK_LEFT);
    EXPECT_TRUE(insert_text(field, "ö"));
    EXPECT_EQ(field.text, "aöc");
    EXPECT_EQ(field.cursor, 3);
}

TEST(NameField, HostileBytesKeepTheCaretInside) {
    NameField field = field_of("\x80\xBF"
                               "a\xC3");
    for (int i = 0; i < 6; ++i) press(field, SDLK_LEFT);
    EXPECT_EQ(field.cursor, 0);
    for (int i = 0; i < 6; ++i) press(field, SDLK_DELETE);
    EXPECT_EQ(field.text, "");
}

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
