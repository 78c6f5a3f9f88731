#include "input/input_conf.h"

#include "platform/files.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>
#include <vector>

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

// A line that means something: it opens a section, or sets a key of the open one.
struct ConfLine {
    int number = 0;
    int player = -1; // of the section: 0 red, 1 blue, -1 none of ours
    bool opens = false;
    std::string key; // lower case
    std::string value;
};

int player_of(std::string const& line) {
    std::string const name = lower(trim(line.substr(1, line.size() - 2)));
    return name == "red" ? 0 : name == "blue" ? 1 : -1;
}

std::vector<ConfLine> read_conf(std::istream& file) {
    std::vector<ConfLine> lines;
    int number = 0;
    int player = -1;
    std::string raw;
    while (std::getline(file, raw)) {
        ++number;
        std::string const line = trim(raw.substr(0, raw.find_first_of(";#")));
        std::size_t const equals = line.find('=');
        if (is_section(line)) {
            player = player_of(line);
            lines.push_back({number, player, true, {}, {}});
        } else if (equals != std::string::npos && player != -1) {
            lines.push_back({number, player, false, lower(trim(line.substr(0, equals))),
                             trim(line.substr(equals + 1))});
        }
    }
    return lines;
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

// A key that the file gives to a control.
struct Wish {
    int line = 0;
    std::size_t player = 0;
    Control control{};
    SDL_Scancode key = SDL_SCANCODE_UNKNOWN;
};

// Keys with a meaning of their own in a race. Space has none before game over.
constexpr std::array RACE_KEYS{SDL_SCANCODE_ESCAPE, SDL_SCANCODE_BACKSPACE, SDL_SCANCODE_G,
                               SDL_SCANCODE_K,      SDL_SCANCODE_L,         SDL_SCANCODE_M,
                               SDL_SCANCODE_N,      SDL_SCANCODE_P,         SDL_SCANCODE_T,
                               SDL_SCANCODE_PAGEUP, SDL_SCANCODE_PAGEDOWN};

bool is_race_key(SDL_Scancode key) {
    return (key >= SDL_SCANCODE_1 && key <= SDL_SCANCODE_9) ||
           (key >= SDL_SCANCODE_F1 && key <= SDL_SCANCODE_F12) ||
           std::find(RACE_KEYS.begin(), RACE_KEYS.end(), key) != RACE_KEYS.end();
}

// SDL's name, or a word for what the file cannot hold as a sign.
SDL_Scancode key_named(std::string const& name) {
    std::string const word = lower(name);
    if (word == "comma") return SDL_SCANCODE_COMMA;
    if (word == "semicolon") return SDL_SCANCODE_SEMICOLON;
    if (word == "hash") return SDL_SCANCODE_NONUSHASH;
    return SDL_GetScancodeFromName(name.c_str());
}

void tell(int line, char const* key, std::string const& cause) {
    std::fprintf(stderr, "input.conf:%d: %s: %s — the built-in key stays\n", line, key,
                 cause.c_str());
}

// The settings of a player's section; where there are several, of the last one.
std::vector<ConfLine> last_section(std::vector<ConfLine> const& lines, int player) {
    std::vector<ConfLine> section;
    for (ConfLine const& line : lines) {
        if (line.player != player) continue;
        if (line.opens) {
            section.clear();
        } else {
            section.push_back(line);
        }
    }
    return section;
}

std::vector<std::string> items_of(std::string const& list) {
    std::vector<std::string> items;
    std::size_t from = 0;
    for (std::size_t end = 0; end != std::string::npos; from = end + 1) {
        end = list.find(',', from);
        std::string item = trim(list.substr(from, end == std::string::npos ? end : end - from));
        if (!item.empty()) items.push_back(std::move(item));
    }
    return items;
}

void add_wish(ConfLine const& line, Control control, std::string const& item,
              std::vector<Wish>& wishes) {
    SDL_Scancode const key = key_named(item);
    if (key == SDL_SCANCODE_UNKNOWN) {
        tell(line.number, line.key.c_str(), "no key is named \"" + item + "\"");
    } else if (is_race_key(key)) {
        tell(line.number, line.key.c_str(), "\"" + item + "\" is a key of the race");
    } else {
        wishes.push_back({line.number, static_cast<std::size_t>(line.player), control, key});
    }
}

// A later line for the same control takes the place of an earlier one.
void add_wishes(ConfLine const& line, bool has_device, std::vector<Wish>& wishes) {
    for (Control const control : ALL_CONTROLS) {
        if (line.key != control_name(control)) continue;
        std::erase_if(wishes, [&](Wish const& wish) {
            return wish.control == control && wish.player == static_cast<std::size_t>(line.player);
        });
        bool const buttons =
            has_device && (control == Control::Accelerate || control == Control::Brake);
        for (std::string const& item : items_of(line.value)) {
            if (buttons && std::any_of(item.begin(), item.end(), is_digit)) continue;
            add_wish(line, control, item, wishes);
        }
    }
}

KeyBindings bound_by(std::vector<Wish> const& wishes) {
    KeyBindings keys = builtin_keys();
    for (Wish const& wish : wishes) {
        keys[wish.player][static_cast<std::size_t>(wish.control)].clear();
    }
    for (Wish const& wish : wishes) {
        keys[wish.player][static_cast<std::size_t>(wish.control)].push_back(wish.key);
    }
    return keys;
}

// Whose control, other than the wish's own, has its key: "red left"; empty if nobody's.
std::string other_holder(KeyBindings const& keys, Wish const& wish) {
    for (std::size_t player : {0U, 1U}) {
        for (Control const control : ALL_CONTROLS) {
            if (player == wish.player && control == wish.control) continue;
            auto const& held = keys_of(keys[player], control);
            if (std::find(held.begin(), held.end(), wish.key) != held.end()) {
                return std::string(player == 0 ? "red " : "blue ") + control_name(control);
            }
        }
    }
    return {};
}

// Of two controls that share a key the one on the later line goes without, so that keys may change
// places, but none drives two controls. A control that loses all has its built-in keys back, which
// may be another's in turn: each round takes one wish away.
KeyBindings grant(std::vector<Wish> wishes) {
    while (true) {
        KeyBindings keys = bound_by(wishes);
        auto const loser = std::find_if(wishes.rbegin(), wishes.rend(), [&](Wish const& wish) {
            return !other_holder(keys, wish).empty();
        });
        if (loser == wishes.rend()) return keys;
        tell(loser->line, control_name(loser->control),
             std::string("\"") + SDL_GetScancodeName(loser->key) + "\" is already " +
                 other_holder(keys, *loser));
        wishes.erase(std::next(loser).base());
    }
}

} // namespace

bool load_input_conf(std::string const& path, GamepadConfig& red, GamepadConfig& blue) {
    std::ifstream file(to_path(path));
    if (file) read_input_conf(file, red, blue);
    return file.is_open();
}

void read_input_conf(std::istream& text, GamepadConfig& red, GamepadConfig& blue) {
    for (ConfLine const& line : read_conf(text)) {
        if (line.player == -1) continue;
        GamepadConfig& config = line.player == 0 ? red : blue;
        if (line.opens) {
            config = {};
            config.enabled = true;
        } else {
            set_value(config, line.key, line.value);
        }
    }
}

KeyBindings load_own_keys(std::string const& path) {
    std::ifstream file(to_path(path)); // one that does not open has no lines
    return read_own_keys(file);
}

KeyBindings read_own_keys(std::istream& text) {
    std::vector<ConfLine> const lines = read_conf(text);
    std::vector<Wish> wishes;
    for (int player : {0, 1}) {
        std::vector<ConfLine> const section = last_section(lines, player);
        bool const has_device =
            std::any_of(section.begin(), section.end(), [](ConfLine const& line) {
                return line.key == "device" && !line.value.empty();
            });
        for (ConfLine const& line : section) add_wishes(line, has_device, wishes);
    }
    std::stable_sort(wishes.begin(), wishes.end(),
                     [](Wish const& a, Wish const& b) { return a.line < b.line; });
    return grant(std::move(wishes));
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
