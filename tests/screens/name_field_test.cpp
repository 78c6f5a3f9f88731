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

constexpr SDL_Keycode LEFT = SDLK_LEFT;
constexpr SDL_Keycode RIGHT = SDLK_RIGHT;
constexpr SDL_Keycode DEL = SDLK_DELETE;
constexpr SDL_Keycode BACK = SDLK_BACKSPACE;

} // namespace

TEST(NameField, CaretAndDeletionsTakeWholeCodePoints) {
    struct {
        char const* text;
        std::vector<SDL_Keycode> keys; // from the end of the text
        char const* left;
        int cursor;
    } const cases[] = {
        {"aä€😀", {LEFT}, "aä€😀", 6},
        {"aä€😀", {LEFT, LEFT, LEFT}, "aä€😀", 1},
        {"aä€😀", {LEFT, LEFT, LEFT, LEFT, LEFT}, "aä€😀", 0},
        {"aä€😀", {SDLK_HOME, RIGHT, RIGHT}, "aä€😀", 3},
        {"aä€😀", {SDLK_HOME, SDLK_END, RIGHT}, "aä€😀", 10},
        {"aä€b", {DEL}, "aä€b", 7},
        {"aä€b", {LEFT, BACK}, "aäb", 3},
        {"aä€b", {SDLK_HOME, BACK}, "aä€b", 0},
        {"aäb", {SDLK_HOME, RIGHT, DEL}, "ab", 1},
        // Bytes that are no text.
        {"\x80\xBF\x61\xC3", {LEFT, LEFT, LEFT, LEFT, LEFT}, "\x80\xBF\x61\xC3", 0},
        {"\x80\xBF\x61\xC3", {SDLK_HOME, DEL, DEL, DEL, DEL}, "", 0},
    };
    for (auto const& [text, keys, left, cursor] : cases) {
        NameField field = field_of(text);
        for (SDL_Keycode const key : keys) press(field, key);
        EXPECT_EQ(field.text, left) << text << ", " << keys.size() << " keys";
        EXPECT_EQ(field.cursor, cursor) << text << ", " << keys.size() << " keys";
    }
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
