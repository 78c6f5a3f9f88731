#include "screens/keyboard_layout.h"

#include <string>
#include <string_view>

std::array<KbKey, 104> const KB_KEYS = {
    // The function keys.
    KbKey{0, 0, 1, 1, "Esc"},
    KbKey{2, 0, 1, 1, "F1"},
    KbKey{3, 0, 1, 1, "F2"},
    KbKey{4, 0, 1, 1, "F3"},
    KbKey{5, 0, 1, 1, "F4"},
    KbKey{6.5F, 0, 1, 1, "F5"},
    KbKey{7.5F, 0, 1, 1, "F6"},
    KbKey{8.5F, 0, 1, 1, "F7"},
    KbKey{9.5F, 0, 1, 1, "F8"},
    KbKey{11, 0, 1, 1, "F9"},
    KbKey{12, 0, 1, 1, "F10"},
    KbKey{13, 0, 1, 1, "F11"},
    KbKey{14, 0, 1, 1, "F12"},
    KbKey{15.5F, 0, 1, 1, "PrtSc"},
    KbKey{16.5F, 0, 1, 1, "ScrLk"},
    KbKey{17.5F, 0, 1, 1, "Pause"},
    // The row of the digits.
    KbKey{0, 1.5F, 1, 1, "~"},
    KbKey{1, 1.5F, 1, 1, "1"},
    KbKey{2, 1.5F, 1, 1, "2"},
    KbKey{3, 1.5F, 1, 1, "3"},
    KbKey{4, 1.5F, 1, 1, "4"},
    KbKey{5, 1.5F, 1, 1, "5"},
    KbKey{6, 1.5F, 1, 1, "6"},
    KbKey{7, 1.5F, 1, 1, "7"},
    KbKey{8, 1.5F, 1, 1, "8"},
    KbKey{9, 1.5F, 1, 1, "9"},
    KbKey{10, 1.5F, 1, 1, "0"},
    KbKey{11, 1.5F, 1, 1, "-"},
    KbKey{12, 1.5F, 1, 1, "="},
    KbKey{13, 1.5F, 2, 1, "Bksp"},
    KbKey{15.5F, 1.5F, 1, 1, "Ins"},
    KbKey{16.5F, 1.5F, 1, 1, "Home"},
    KbKey{17.5F, 1.5F, 1, 1, "PgUp"},
    KbKey{19, 1.5F, 1, 1, "Num"},
    KbKey{20, 1.5F, 1, 1, "/"},
    KbKey{21, 1.5F, 1, 1, "*"},
    KbKey{22, 1.5F, 1, 1, "-"},
    // The row of the upper letters.
    KbKey{0, 2.5F, 1.5F, 1, "Tab"},
    KbKey{1.5F, 2.5F, 1, 1, "Q"},
    KbKey{2.5F, 2.5F, 1, 1, "W"},
    KbKey{3.5F, 2.5F, 1, 1, "E"},
    KbKey{4.5F, 2.5F, 1, 1, "R"},
    KbKey{5.5F, 2.5F, 1, 1, "T"},
    KbKey{6.5F, 2.5F, 1, 1, "Y"},
    KbKey{7.5F, 2.5F, 1, 1, "U"},
    KbKey{8.5F, 2.5F, 1, 1, "I"},
    KbKey{9.5F, 2.5F, 1, 1, "O"},
    KbKey{10.5F, 2.5F, 1, 1, "P"},
    KbKey{11.5F, 2.5F, 1, 1, "["},
    KbKey{12.5F, 2.5F, 1, 1, "]"},
    KbKey{13.5F, 2.5F, 1.5F, 1, "\\"},
    KbKey{15.5F, 2.5F, 1, 1, "Del"},
    KbKey{16.5F, 2.5F, 1, 1, "End"},
    KbKey{17.5F, 2.5F, 1, 1, "PgDn"},
    KbKey{19, 2.5F, 1, 1, "7"},
    KbKey{20, 2.5F, 1, 1, "8"},
    KbKey{21, 2.5F, 1, 1, "9"},
    KbKey{22, 2.5F, 1, 2, "+"},
    // The home row.
    KbKey{0, 3.5F, 1.75F, 1, "Caps"},
    KbKey{1.75F, 3.5F, 1, 1, "A"},
    KbKey{2.75F, 3.5F, 1, 1, "S"},
    KbKey{3.75F, 3.5F, 1, 1, "D"},
    KbKey{4.75F, 3.5F, 1, 1, "F"},
    KbKey{5.75F, 3.5F, 1, 1, "G"},
    KbKey{6.75F, 3.5F, 1, 1, "H"},
    KbKey{7.75F, 3.5F, 1, 1, "J"},
    KbKey{8.75F, 3.5F, 1, 1, "K"},
    KbKey{9.75F, 3.5F, 1, 1, "L"},
    KbKey{10.75F, 3.5F, 1, 1, ";"},
    KbKey{11.75F, 3.5F, 1, 1, "'"},
    KbKey{12.75F, 3.5F, 2.25F, 1, "Enter"},
    KbKey{19, 3.5F, 1, 1, "4"},
    KbKey{20, 3.5F, 1, 1, "5"},
    KbKey{21, 3.5F, 1, 1, "6"},
    // The row of the lower letters.
    KbKey{0, 4.5F, 2.25F, 1, "Shift"},
    KbKey{2.25F, 4.5F, 1, 1, "Z"},
    KbKey{3.25F, 4.5F, 1, 1, "X"},
    KbKey{4.25F, 4.5F, 1, 1, "C"},
    KbKey{5.25F, 4.5F, 1, 1, "V"},
    KbKey{6.25F, 4.5F, 1, 1, "B"},
    KbKey{7.25F, 4.5F, 1, 1, "N"},
    KbKey{8.25F, 4.5F, 1, 1, "M"},
    KbKey{9.25F, 4.5F, 1, 1, ","},
    KbKey{10.25F, 4.5F, 1, 1, "."},
    KbKey{11.25F, 4.5F, 1, 1, "/"},
    KbKey{12.25F, 4.5F, 2.75F, 1, "Shift"},
    KbKey{16.5F, 4.5F, 1, 1, "<UP>"},
    KbKey{19, 4.5F, 1, 1, "1"},
    KbKey{20, 4.5F, 1, 1, "2"},
    KbKey{21, 4.5F, 1, 1, "3"},
    KbKey{22, 4.5F, 1, 2, "Ent"},
    // The row of the space bar.
    KbKey{0, 5.5F, 1.25F, 1, "Ctrl"},
    KbKey{1.25F, 5.5F, 1.25F, 1, "Win"},
    KbKey{2.5F, 5.5F, 1.25F, 1, "Alt"},
    KbKey{3.75F, 5.5F, 6.25F, 1, ""},
    KbKey{10, 5.5F, 1.25F, 1, "Alt"},
    KbKey{11.25F, 5.5F, 1.25F, 1, "Win"},
    KbKey{12.5F, 5.5F, 1.25F, 1, "Menu"},
    KbKey{13.75F, 5.5F, 1.25F, 1, "Ctrl"},
    KbKey{15.5F, 5.5F, 1, 1, "<LEFT>"},
    KbKey{16.5F, 5.5F, 1, 1, "<DOWN>"},
    KbKey{17.5F, 5.5F, 1, 1, "<RIGHT>"},
    KbKey{19, 5.5F, 2, 1, "0"},
    KbKey{21, 5.5F, 1, 1, "."},
};

std::array<char const*, 3> const FN_GROUP = {"PrtSc", "ScrLk", "Pause"};
std::array<char const*, 6> const NAV_GROUP = {"Ins", "Del", "Home", "End", "PgUp", "PgDn"};
std::array<char const*, 9> const WIDE_GROUP = {"Ctrl",  "Win",   "Alt",  "Menu", "Bksp",
                                               "Enter", "Shift", "Caps", "Tab"};

// key, text, tint, player, lead, x_min, x_max, dir, stem, align
std::array<Anno, 4> const ANNOS_RED = {{
    {"Z", "turn left", TINT_PLAYER, 1, 0.2F, -1, 99, 1, 1.5F, 0},
    {"X", "turn right", TINT_PLAYER, 1, -0.12F, -1, 99, 1, 1.5F, 0},
    {"F", "accelerate\n(brake)", TINT_PLAYER, 1, -0.15F, -1, 99, 1, 1.5F, 0},
    {"C", "handbrake", TINT_PLAYER, 1, 0.3F, -1, 99, 1, 1.5F, 0},
}};

std::array<Anno, 4> const ANNOS_BLUE = {{
    {"1", "turn left", TINT_PLAYER, 2, 0, 19, 99, 1, 1.5F, 0},
    {"2", "turn right", TINT_PLAYER, 2, -0.4F, 19, 99, 1, 1.5F, 0},
    {"Ent", "accelerate\n(brake)", TINT_PLAYER, 2, 0, 19, 99, 1, 1.5F, 0},
    {".", "handbrake", TINT_PLAYER, 2, 0.4F, 19, 99, 1, 1.5F, 0},
}};

std::array<Anno, 4> const ANNOS_BLUE_ALT = {{
    {",", "turn left", TINT_PLAYER, 2, 0.4F, -1, 99, 1, 1.5F, 0},
    {".", "turn right", TINT_PLAYER, 2, 0.35F, -1, 15, 1, 1.5F, 0},
    {"/", "handbrake\n[or SHIFT]", TINT_PLAYER, 2, 0.3F, -1, 15, 1, 1.5F, 0},
    {"'", "accelerate (brake)\n[or ENTER]", TINT_PLAYER, 2, -0.35F, -1, 99, 1, 1.5F, 0},
}};

std::array<Anno, 7> const ANNOS_MAJOR = {{
    {"Esc", "Return to Menu", TINT_MAJOR, 0, 0, -1, 99, 0, 1.2F, 2},
    {"F1", "Red-only view", TINT_MAJOR, 0, 0, -1, 99, 1, 1.6F, 0},
    {"F2", "Blue-only view", TINT_MAJOR, 0, 0, -1, 99, 1, 1, 0},
    {"G", "                 Ghost-car on/off\n                         (with SHIFT, best ever)",
     TINT_MAJOR, 0, 0.4F, -1, 99, 2, 3.9F, 3},
    {"Bksp", "Quick Restart", TINT_MAJOR, 0, 0, -1, 99, 1, 2.4F, 0},
    {"PgUp", "Zoom in", TINT_MAJOR, 0, 0, -1, 99, 1, 2.1F, 0},
    {"PgDn", "Zoom out", TINT_MAJOR, 0, 0, -1, 99, 1, 2.1F, 0},
}};

std::array<Anno, 9> const ANNOS_MINOR = {{
    {"N", "Next song", TINT_MINOR, 0, 0.4F, -1, 99, 2, 1.8F, 1},
    {"K", "Kill engine", TINT_MINOR, 0, 0.4F, -1, 99, 2, 3.2F, 1},
    {"M", "Music on/off", TINT_MINOR, 0, 0.4F, -1, 99, 2, 2.6F, 1},
    {"P", "smooth panning", TINT_MINOR, 0, 0, -1, 99, 0, 1.45F, 2},
    {"T", "simulation/artistic view", TINT_MINOR, 0, 0, -1, 99, 0, 1.45F, 2},
    {"F7", "alt. ghost-car", TINT_MINOR, 0, 0, -1, 99, 1, 1.2F, 2},
    {"F10", "default volume", TINT_MINOR, 0, 0, -1, 99, 1, 2.4F, 0},
    {"F11", "lower volume", TINT_MINOR, 0, 0, -1, 99, 1, 2, 0},
    {"F12", "raise volume", TINT_MINOR, 0, 0, -1, 99, 1, 1.6F, 0},
}};

KbKey const* find_key(Anno const& anno) {
    std::string_view const label = anno.key;
    for (KbKey const& key : KB_KEYS) {
        if (key.label == label && key.x >= anno.x_min && key.x <= anno.x_max) return &key;
    }
    return nullptr;
}

SDL_Scancode scancode_of(KbKey const& key) {
    struct Word {
        std::string_view label;
        SDL_Scancode left; // or the only one
        SDL_Scancode right = left;
    };
    constexpr std::array WORDS{
        Word{"", SDL_SCANCODE_SPACE},
        Word{"~", SDL_SCANCODE_GRAVE},
        Word{"Esc", SDL_SCANCODE_ESCAPE},
        Word{"PrtSc", SDL_SCANCODE_PRINTSCREEN},
        Word{"ScrLk", SDL_SCANCODE_SCROLLLOCK},
        Word{"Bksp", SDL_SCANCODE_BACKSPACE},
        Word{"Ins", SDL_SCANCODE_INSERT},
        Word{"Del", SDL_SCANCODE_DELETE},
        Word{"PgUp", SDL_SCANCODE_PAGEUP},
        Word{"PgDn", SDL_SCANCODE_PAGEDOWN},
        Word{"Num", SDL_SCANCODE_NUMLOCKCLEAR},
        Word{"Caps", SDL_SCANCODE_CAPSLOCK},
        Word{"Enter", SDL_SCANCODE_RETURN},
        Word{"Ent", SDL_SCANCODE_KP_ENTER},
        Word{"Menu", SDL_SCANCODE_APPLICATION},
        Word{"Shift", SDL_SCANCODE_LSHIFT, SDL_SCANCODE_RSHIFT},
        Word{"Ctrl", SDL_SCANCODE_LCTRL, SDL_SCANCODE_RCTRL},
        Word{"Alt", SDL_SCANCODE_LALT, SDL_SCANCODE_RALT},
        Word{"Win", SDL_SCANCODE_LGUI, SDL_SCANCODE_RGUI},
        Word{"<UP>", SDL_SCANCODE_UP},
        Word{"<DOWN>", SDL_SCANCODE_DOWN},
        Word{"<LEFT>", SDL_SCANCODE_LEFT},
        Word{"<RIGHT>", SDL_SCANCODE_RIGHT},
    };
    for (Word const& word : WORDS) {
        if (word.label == key.label) return key.x < KEYPAD_X / 3 ? word.left : word.right;
    }
    std::string const pad = key.x >= KEYPAD_X ? "Keypad " : "";
    return SDL_GetScancodeFromName((pad + key.label).c_str());
}

KbKey const* find_key(SDL_Scancode code) {
    for (KbKey const& key : KB_KEYS) {
        if (scancode_of(key) == code) return &key;
    }
    return nullptr;
}

SDL_Rect key_cell(KbKey const& key, SDL_Rect const& keyboard, double unit) {
    auto const pixels = [unit](float units) {
        return static_cast<int>(static_cast<double>(units) * unit);
    };
    return {keyboard.x + pixels(key.x), keyboard.y + pixels(key.y), pixels(key.w), pixels(key.h)};
}

SDL_Rect inner_rect(SDL_Rect const& cell, int inset) {
    return {cell.x + inset, cell.y + inset, cell.w - 2 * inset, cell.h - 2 * inset};
}
