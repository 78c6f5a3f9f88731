// Any bytes as a gamepad file: every line is either understood or ignored.

#include "input/input_conf.h"
#include "input_file.h"

#include <string>

namespace {

void require_usable(GamepadConfig const& config) {
    require(config.turn_axis >= -1 && config.turn_hat >= -1);
    require(config.accel_button >= -1 && config.brake_button >= -1);
    require(config.turn_axis < 0 || config.turn_hat < 0); // one of them steers
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static std::string const path = scratch_folder() / "input.conf";
    write_bytes(path, data, size);
    GamepadConfig red;
    GamepadConfig blue;
    require(load_input_conf(path, red, blue));
    require_usable(red);
    require_usable(blue);
    return 0;
}
