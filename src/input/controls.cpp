#include "input/controls.h"

#include <initializer_list>
#include <utility>

namespace {

// What the keys say: those held now, and those that went down since the last frame, so that a key
// tapped between two frames counts too.
struct Keys {
    unsigned char const* held;
    bool const* pressed;

    [[nodiscard]] bool any(std::initializer_list<SDL_Scancode> codes) const {
        for (SDL_Scancode const code : codes) {
            if (code != SDL_SCANCODE_UNKNOWN && (held[code] != 0 || pressed[code])) return true;
        }
        return false;
    }
};

constexpr SDL_Scancode NO_KEY = SDL_SCANCODE_UNKNOWN;

} // namespace

void update_input(Player& player, unsigned char const* keys, bool const* pressed, SDL_Scancode gas1,
                  SDL_Scancode brake1, SDL_Scancode left1, SDL_Scancode right1, SDL_Scancode gas2,
                  SDL_Scancode brake2, SDL_Scancode left2, SDL_Scancode right2, SDL_Scancode gas3,
                  SDL_Scancode brake3) {
    Keys const down{keys, pressed};
    Input& input = player.input;
    input.gas = down.any({gas1, gas2, gas3}) != player.invert_gas;
    input.brake = down.any({brake1, brake2, brake3});
    input.left = down.any({left1, left2});
    input.right = down.any({right1, right2});
    if (player.swap_when_reversing && player.car.throttle < 0.0) std::swap(input.left, input.right);
}

void update_red_input(Player& red, unsigned char const* keys, bool const* pressed) {
    update_input(red, keys, pressed, SDL_SCANCODE_F, SDL_SCANCODE_C, SDL_SCANCODE_Z, SDL_SCANCODE_X,
                 NO_KEY, NO_KEY, NO_KEY, NO_KEY, NO_KEY, NO_KEY);
}

void update_blue_input(Player& blue, unsigned char const* keys, bool const* pressed) {
    update_input(blue, keys, pressed, SDL_SCANCODE_KP_ENTER, SDL_SCANCODE_KP_PERIOD,
                 SDL_SCANCODE_KP_1, SDL_SCANCODE_KP_2, SDL_SCANCODE_APOSTROPHE, SDL_SCANCODE_SLASH,
                 SDL_SCANCODE_COMMA, SDL_SCANCODE_PERIOD, SDL_SCANCODE_RETURN, SDL_SCANCODE_RSHIFT);
}
