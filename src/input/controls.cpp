#include "input/controls.h"

#include <initializer_list>
#include <utility>

namespace {

// What the keys say: those held now, and those that went down since the last frame, so that a key
// tapped between two frames counts too.
struct Keys {
    unsigned char const* held;
    bool const* pressed;

    template <class Codes>
    [[nodiscard]] bool any(Codes const& codes) const {
        for (SDL_Scancode const code : codes) {
            if (code != SDL_SCANCODE_UNKNOWN && (held[code] != 0 || pressed[code])) return true;
        }
        return false;
    }
};

void steer(Player& player, bool gas, bool brake, bool left, bool right) {
    player.input = {gas != player.invert_gas, brake, left, right};
    if (player.swap_when_reversing && player.car.throttle < 0.0) {
        std::swap(player.input.left, player.input.right);
    }
}

} // namespace

void update_input(Player& player, unsigned char const* keys, bool const* pressed, SDL_Scancode gas1,
                  SDL_Scancode brake1, SDL_Scancode left1, SDL_Scancode right1, SDL_Scancode gas2,
                  SDL_Scancode brake2, SDL_Scancode left2, SDL_Scancode right2, SDL_Scancode gas3,
                  SDL_Scancode brake3) {
    using Codes = std::initializer_list<SDL_Scancode>;
    Keys const down{keys, pressed};
    steer(player, down.any(Codes{gas1, gas2, gas3}), down.any(Codes{brake1, brake2, brake3}),
          down.any(Codes{left1, left2}), down.any(Codes{right1, right2}));
}

void update_input(Player& player, unsigned char const* keys, bool const* pressed,
                  PlayerKeys const& bound) {
    Keys const down{keys, pressed};
    auto const on = [&](Control control) { return down.any(keys_of(bound, control)); };
    steer(player, on(Control::Accelerate), on(Control::Brake), on(Control::Left),
          on(Control::Right));
}

void update_red_input(Player& red, unsigned char const* keys, bool const* pressed) {
    update_input(red, keys, pressed, builtin_keys()[0]);
}

void update_blue_input(Player& blue, unsigned char const* keys, bool const* pressed) {
    update_input(blue, keys, pressed, builtin_keys()[1]);
}
