#pragma once

// The keyboard that the help screen draws, and which of its keys are pointed at with what words.
// Places and sizes are in key units: the width of a letter key.

#include <SDL.h>

#include <array>

// The whole keyboard.
constexpr double KEYBOARD_W = 23.0;
constexpr double KEYBOARD_H = 6.5;
constexpr float KEYPAD_X = 19; // where the keypad begins

struct KbKey {
    float x;
    float y;
    float w;
    float h;
    // What stands on the key; empty for none. "<UP>", "<DOWN>", "<LEFT>" and "<RIGHT>" stand for
    // arrows.
    char const* label;
};

extern std::array<KbKey, 104> const KB_KEYS;

// Labels that share one size of lettering, so that like keys look alike.
extern std::array<char const*, 3> const FN_GROUP;
extern std::array<char const*, 6> const NAV_GROUP;
extern std::array<char const*, 9> const WIDE_GROUP;

// Values of Anno::tint.
constexpr int TINT_PLAYER = 0;
constexpr int TINT_MAJOR = 1;
constexpr int TINT_MINOR = 2;

// One annotation: a highlighted key, a leader and a caption.
struct Anno {
    char const* key;  // the label of the key that it points at
    char const* text; // a line feed starts a second line
    int tint;
    int player;  // 1 red, 2 blue; 0 for keys that are no player's
    float lead;  // where the leader leaves the key: share of its width, from its centre
    float x_min; // the key's x lies within these, as some labels stand on two keys
    float x_max;
    int dir;    // race keys only: 0 up and left, 1 up and right, 2 down and left, 3 down and right
    float stem; // race keys only: the leader's reach on each axis
    int align;  // race keys only: text 0 right of the leader's end, 1 left, 2 above, 3 below
};

extern std::array<Anno, 4> const ANNOS_RED;
extern std::array<Anno, 4> const ANNOS_BLUE;
extern std::array<Anno, 4> const ANNOS_BLUE_ALT;
extern std::array<Anno, 7> const ANNOS_MAJOR;
extern std::array<Anno, 9> const ANNOS_MINOR;

// The key that an annotation points at; null if there is none.
KbKey const* find_key(Anno const& anno);

// Which key of the keyboard it is, wherever a layout puts its letters.
SDL_Scancode scancode_of(KbKey const& key);
// Null for a key that is not drawn.
KbKey const* find_key(SDL_Scancode code);

// The key's cell in pixels, for a keyboard that starts at the corner of `keyboard`.
SDL_Rect key_cell(KbKey const& key, SDL_Rect const& keyboard, double unit);
// `cell` without a border of `inset` pixels.
SDL_Rect inner_rect(SDL_Rect const& cell, int inset);
