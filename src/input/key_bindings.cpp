#include "input/key_bindings.h"

namespace {

// Of the scripts whose small and capital letters lie a fixed way apart.
struct CapitalRange {
    Uint32 first; // small letters
    Uint32 last;
    Uint32 offset; // down to the capitals
};
constexpr std::array CAPITALS{
    CapitalRange{U'a', U'z', 32},           CapitalRange{U'\u00e0', U'\u00f6', 32},
    CapitalRange{U'\u00f8', U'\u00fe', 32}, CapitalRange{U'\u03b1', U'\u03c1', 32},
    CapitalRange{U'\u03c3', U'\u03c9', 32}, CapitalRange{U'\u0430', U'\u044f', 32},
    CapitalRange{U'\u0450', U'\u045f', 80},
};

Uint32 capital(Uint32 letter) {
    for (CapitalRange const& range : CAPITALS) {
        if (letter >= range.first && letter <= range.last) return letter - range.offset;
    }
    return letter;
}

std::string utf8(Uint32 point) {
    auto const byte = [](Uint32 bits) { return static_cast<char>(bits); };
    auto const tail = [&](unsigned shift) { return byte(0x80U | (point >> shift & 0x3FU)); };
    if (point < 0x80U) return {byte(point)};
    if (point < 0x800U) return {byte(0xC0U | point >> 6U), tail(0)};
    if (point < 0x10000U) return {byte(0xE0U | point >> 12U), tail(6), tail(0)};
    return {byte(0xF0U | point >> 18U), tail(12), tail(6), tail(0)};
}

} // namespace

KeyBindings const& builtin_keys() {
    static KeyBindings const keys{
        PlayerKeys{{{SDL_SCANCODE_Z}, {SDL_SCANCODE_X}, {SDL_SCANCODE_F}, {SDL_SCANCODE_C}}},
        PlayerKeys{{{SDL_SCANCODE_KP_1, SDL_SCANCODE_COMMA},
                    {SDL_SCANCODE_KP_2, SDL_SCANCODE_PERIOD},
                    {SDL_SCANCODE_KP_ENTER, SDL_SCANCODE_APOSTROPHE, SDL_SCANCODE_RETURN},
                    {SDL_SCANCODE_KP_PERIOD, SDL_SCANCODE_SLASH, SDL_SCANCODE_RSHIFT}}}};
    return keys;
}

char const* control_name(Control control) {
    constexpr std::array NAMES{"left", "right", "accelerate", "brake"};
    return NAMES.at(static_cast<std::size_t>(control));
}

std::string printed_key(SDL_Scancode key) {
    bool const digit = key >= SDL_SCANCODE_1 && key <= SDL_SCANCODE_0;
    auto const symbol = static_cast<Uint32>(SDL_GetKeyFromScancode(key));
    bool const bears_a_sign = symbol > U' ' && symbol != SDLK_DELETE &&
                              (symbol & static_cast<Uint32>(SDLK_SCANCODE_MASK)) == 0;
    // Where digits need Shift they are printed above what comes without it, and players go by them.
    if (bears_a_sign && !digit) return utf8(capital(symbol));
    return SDL_GetScancodeName(key);
}
