// Any bytes as a gamepad file: every line is either understood or ignored.

#include "input/input_conf.h"
#include "input_file.h"

#include <cstddef>
#include <map>
#include <utility>

namespace {

void require_usable(GamepadConfig const& config) {
    require(config.turn_axis >= -1 && config.turn_hat >= -1);
    require(config.accel_button >= -1 && config.brake_button >= -1);
    require(config.turn_axis < 0 || config.turn_hat < 0); // one of them steers
}

// Every control has a key, and no key has two controls.
void require_clear(KeyBindings const& keys) {
    std::map<SDL_Scancode, std::pair<std::size_t, std::size_t>> holders;
    for (std::size_t player = 0; player < keys.size(); ++player) {
        for (std::size_t control = 0; control < keys[player].size(); ++control) {
            require(!keys[player][control].empty());
            for (SDL_Scancode const key : keys[player][control]) {
                auto const [holder, added] = holders.try_emplace(key, player, control);
                require(added || holder->second == std::pair(player, control));
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    GamepadConfig red;
    GamepadConfig blue;
    std::string_view const text = as_text(data, size);
    read_input_conf(text, red, blue);
    require_usable(red);
    require_usable(blue);
    require_clear(read_own_keys(text));
    return 0;
}
