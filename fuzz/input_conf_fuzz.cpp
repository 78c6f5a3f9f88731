// Any bytes as a gamepad file: every line is either understood or ignored.

#include "input/input_conf.h"
#include "input_file.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

namespace {

void require_usable(GamepadConfig const& config) {
    require(config.turn_axis >= -1 && config.turn_hat >= -1);
    require(config.accel_button >= -1 && config.brake_button >= -1);
    require(config.turn_axis < 0 || config.turn_hat < 0); // one of them steers
}

// Every control has a key, and no key has two controls.
void require_clear(KeyBindings const& keys) {
    std::set<std::pair<std::size_t, std::size_t>> holders;
    for (int code = 1; code < SDL_NUM_SCANCODES; ++code) {
        holders.clear();
        for (std::size_t player = 0; player < keys.size(); ++player) {
            for (std::size_t control = 0; control < keys[player].size(); ++control) {
                auto const& held = keys[player][control];
                require(!held.empty());
                if (std::find(held.begin(), held.end(), code) != held.end())
                    holders.insert({player, control});
            }
        }
        require(holders.size() <= 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    GamepadConfig red;
    GamepadConfig blue;
    InputStream pads(data, size);
    read_input_conf(pads, red, blue);
    require_usable(red);
    require_usable(blue);
    InputStream keys(data, size);
    require_clear(read_own_keys(keys));
    return 0;
}
