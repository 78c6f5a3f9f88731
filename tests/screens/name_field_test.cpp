#include "screens/name_field.h"

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

TEST(NameField, LosesTheBlanksAtItsEndsWhenItIsLeft) {
    for (auto const& [typed, left] : {std::pair{"Zoe ", "Zoe"},
                                      {" \t Zoe B ", "Zoe B"},
                                      {"Zoe", "Zoe"},
                                      {"  ", ""},
                                      {"", ""}}) {
        NameField field = field_of(typed);
        EXPECT_EQ(trim_blanks(field), std::string(typed) != left);
        EXPECT_EQ(field.text, left);
        EXPECT_EQ(field.cursor, static_cast<int>(field.text.size()));
    }
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
