#pragma once

// The two editable player names: the text with its caret and the keys that edit it.

#include "screens/menu_label.h"

#include <SDL.h>
#include <SDL_ttf.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// One editable name. Sizes are output pixels, not logical ones.
struct NameField {
    std::string text;  // UTF-8
    int cursor = 0;    // byte offset of the caret: at a code point's first byte or at the end
    TextureHandle tex; // null while empty
    int w = 0;
    int h = 0;       // the font's height while the text is empty
    int caret_x = 0; // width of the text before the caret
};

struct PlayerNames {
    MenuLabel red_label;
    MenuLabel blue_label;
    std::array<NameField, 2> fields; // red, blue
    MenuLabel computer;              // stands in place of a name whose car the computer drives
    std::array<bool, 2> driven{};    // by the computer
    int focus = -1;                  // the field that takes typing, -1 for none
    std::uint32_t blink_at = 0;      // tick from which the caret's blink is counted
};

// Typing stops at this many code points; a longer name from the file is taken as it stands.
constexpr int MAX_NAME_LENGTH = 14;

int count_code_points(std::string_view text);
// Inserts typed text at the caret. False, and nothing changed, if the name would grow too long.
bool insert_text(NameField& field, std::string_view typed);
// Caret moves, deletions and clearing. True if the key was one of these, whether or not it found
// something to do; the field then needs refresh_field.
bool edit_field(NameField& field, SDL_Keysym const& key);

// Takes off the blanks at both ends, so that "Zoe " and "Zoe" are one player; true if there were
// any. The field then needs refresh_field.
bool trim_blanks(NameField& field);

// Renders the field anew after a change of text or caret.
void refresh_field(NameField& field, TTF_Font* font, SDL_Renderer* renderer);
