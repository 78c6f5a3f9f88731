#include "input/input_conf.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <system_error>

namespace {

constexpr char const* BLANKS = " \t\r\n";

// ASCII only: the same in every locale.
std::string lower(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_section(std::string const& line) {
    return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

// The record of the section that a line "[name]" opens, started again from nothing; null for
// sections that are not ours.
GamepadConfig* open_section(std::string const& line, GamepadConfig& red, GamepadConfig& blue) {
    std::string const name = lower(trim(line.substr(1, line.size() - 2)));
    if (name != "red" && name != "blue") return nullptr;
    GamepadConfig& config = name == "red" ? red : blue;
    config = GamepadConfig{};
    config.enabled = true;
    return &config;
}

// One control steers: a hat puts off an axis of a line above, and the other way round.
void set_turn(GamepadConfig& config, std::string const& value) {
    bool const hat = lower(value).starts_with("hat");
    int const index = parse_indexed(value);
    config.turn_hat = hat ? index : -1;
    config.turn_axis = hat ? -1 : index;
}

void set_value(GamepadConfig& config, std::string const& key, std::string const& value) {
    if (key == "device") {
        config.device = value;
    } else if (key == "accelerate") {
        config.accel_button = parse_indexed(value);
    } else if (key == "brake") {
        config.brake_button = parse_indexed(value);
    } else if (key == "turn") {
        set_turn(config, value);
    }
}

} // namespace

bool load_input_conf(std::string const& path, GamepadConfig& red, GamepadConfig& blue) {
    std::ifstream file(path);
    if (!file) return false;
    GamepadConfig* section = nullptr;
    std::string raw;
    while (std::getline(file, raw)) {
        std::string const line = trim(raw.substr(0, raw.find_first_of(";#")));
        std::size_t const equals = line.find('=');
        if (is_section(line)) {
            section = open_section(line, red, blue);
        } else if (equals != std::string::npos && section != nullptr) {
            set_value(*section, lower(trim(line.substr(0, equals))), trim(line.substr(equals + 1)));
        }
    }
    return true;
}

std::string trim(std::string const& text) {
    std::size_t const first = text.find_first_not_of(BLANKS);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

int parse_indexed(std::string const& text) {
    auto const digits = std::find_if(text.begin(), text.end(), is_digit);
    char const* const begin = text.data() + (digits - text.begin());
    int number = -1;
    auto const result = std::from_chars(begin, text.data() + text.size(), number);
    return result.ec == std::errc{} ? number : -1;
}
