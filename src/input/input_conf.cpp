#include "input/input_conf.h"

#include "platform/files.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <span>
#include <sstream>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

// ASCII only: the same in every locale.
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lower(std::string_view text) {
    std::string low(text);
    for (char& c : low) c = lower(c);
    return low;
}

// Whether a text is the word, which is in lower case, however the text is written.
bool says(std::string_view text, std::string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char a, char b) { return lower(a) == b; });
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

int first_number(std::string_view text) {
    char const* const end = text.data() + text.size();
    char const* const begin = std::find_if(text.data(), end, is_digit);
    int number = -1;
    auto const result = std::from_chars(begin, end, number);
    return result.ec == std::errc{} ? number : -1;
}

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Without blanks at both ends.
std::string_view trim(std::string_view text) {
    while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
    return text;
}

// Without what is meant for people.
std::string_view before_remark(std::string_view line) {
    auto const* const remark =
        std::find_if(line.begin(), line.end(), [](char c) { return c == ';' || c == '#'; });
    return line.substr(0, static_cast<std::size_t>(remark - line.begin()));
}

bool is_section(std::string_view line) {
    return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

// A line that means something: it opens a section, or sets a key of the open one.
struct ConfLine {
    int number = 0;
    int player = -1; // of the section: 0 red, 1 blue, -1 none of ours
    bool opens = false;
    std::string_view key; // within the file's text, as the value
    std::string_view value;
};

int player_of(std::string_view line) {
    std::string_view const name = trim(line.substr(1, line.size() - 2));
    return says(name, "red") ? 0 : says(name, "blue") ? 1 : -1;
}

// Takes the next line off the text.
std::string_view take_line(std::string_view& text) {
    std::string_view const line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

std::vector<ConfLine> read_conf(std::string_view text) {
    std::vector<ConfLine> lines;
    int number = 0;
    int player = -1;
    while (!text.empty()) {
        ++number;
        std::string_view const line = trim(before_remark(take_line(text)));
        std::size_t const equals = line.find('=');
        if (is_section(line)) {
            player = player_of(line);
            lines.push_back({number, player, true, {}, {}});
        } else if (equals != std::string_view::npos && player != -1) {
            lines.push_back({number, player, false, trim(line.substr(0, equals)),
                             trim(line.substr(equals + 1))});
        }
    }
    return lines;
}

// One control steers: a hat puts off an axis of a line above, and the other way round.
void set_turn(GamepadConfig& config, std::string_view value) {
    bool const hat = says(value.substr(0, 3), "hat");
    int const index = first_number(value);
    config.turn_hat = hat ? index : -1;
    config.turn_axis = hat ? -1 : index;
}

void set_value(GamepadConfig& config, std::string_view key, std::string_view value) {
    if (says(key, "device")) {
        config.device = value;
    } else if (says(key, "accelerate")) {
        config.accel_button = first_number(value);
    } else if (says(key, "brake")) {
        config.brake_button = first_number(value);
    } else if (says(key, "turn")) {
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

using KeyNames = std::unordered_map<std::string, SDL_Scancode>;

// SDL's names in lower case, words for what the file cannot hold as a sign, and the help page's
// name for Return.
KeyNames name_keys() {
    KeyNames names{{"enter", SDL_SCANCODE_RETURN},
                   {"comma", SDL_SCANCODE_COMMA},
                   {"semicolon", SDL_SCANCODE_SEMICOLON},
                   {"hash", SDL_SCANCODE_NONUSHASH}};
    for (int code = 1; code < SDL_NUM_SCANCODES; ++code) {
        auto const key = static_cast<SDL_Scancode>(code);
        names.try_emplace(lower(SDL_GetScancodeName(key)), key);
    }
    names.erase(""); // keys without a name
    return names;
}

SDL_Scancode key_named(std::string_view name) {
    static KeyNames const names = name_keys();
    auto const key = names.find(lower(name));
    return key != names.end() ? key->second : SDL_SCANCODE_UNKNOWN;
}

void tell(int line, char const* key, std::string const& cause) {
    std::fprintf(stderr, "input.conf:%d: %s: %s — the built-in key stays\n", line, key,
                 cause.c_str());
}

// The settings of a player's section; where there are several, of the last one.
std::span<ConfLine const> last_section(std::span<ConfLine const> lines, int player) {
    std::span<ConfLine const> section;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].opens || lines[i].player != player) continue;
        std::size_t end = i + 1;
        while (end < lines.size() && !lines[end].opens) ++end;
        section = lines.subspan(i + 1, end - i - 1);
    }
    return section;
}

std::vector<std::string_view> items_of(std::string_view list) {
    std::vector<std::string_view> items;
    std::size_t from = 0;
    for (std::size_t end = 0; end != std::string_view::npos; from = end + 1) {
        end = list.find(',', from);
        std::string_view const item =
            trim(list.substr(from, end == std::string_view::npos ? end : end - from));
        if (!item.empty()) items.push_back(item);
    }
    return items;
}

std::string quoted(std::string_view text) {
    std::string quote(1, '"');
    quote += text;
    return quote += '"';
}

void add_wish(ConfLine const& line, Control control, std::string_view item,
              std::vector<Wish>& wishes) {
    char const* const name = control_name(control);
    SDL_Scancode const key = key_named(item);
    if (key == SDL_SCANCODE_UNKNOWN) {
        tell(line.number, name, "no key is named " + quoted(item));
    } else if (is_race_key(key)) {
        tell(line.number, name, quoted(item) + " is a key of the race");
    } else {
        wishes.push_back({line.number, static_cast<std::size_t>(line.player), control, key});
    }
}

// A later line for the same control takes the place of an earlier one.
void add_wishes(ConfLine const& line, bool has_device, std::vector<Wish>& wishes) {
    for (Control const control : ALL_CONTROLS) {
        if (!says(line.key, control_name(control))) continue;
        std::erase_if(wishes, [&](Wish const& wish) {
            return wish.control == control && wish.player == static_cast<std::size_t>(line.player);
        });
        bool const buttons =
            has_device && (control == Control::Accelerate || control == Control::Brake);
        for (std::string_view const item : items_of(line.value)) {
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
             quoted(SDL_GetScancodeName(loser->key)) + " is already " + other_holder(keys, *loser));
        wishes.erase(std::next(loser).base());
    }
}

// Nothing if the file cannot be opened; what can be read of it otherwise.
std::optional<std::string> read_whole(std::string const& path) {
    std::ifstream file(to_path(path));
    if (!file) return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

bool load_input_conf(std::string const& path, GamepadConfig& red, GamepadConfig& blue) {
    std::optional<std::string> const text = read_whole(path);
    if (text) read_input_conf(*text, red, blue);
    return text.has_value();
}

void read_input_conf(std::string_view text, GamepadConfig& red, GamepadConfig& blue) {
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
    return read_own_keys(read_whole(path).value_or(""));
}

KeyBindings read_own_keys(std::string_view text) {
    std::vector<ConfLine> const lines = read_conf(text);
    std::vector<Wish> wishes;
    for (int player : {0, 1}) {
        std::span<ConfLine const> const section = last_section(lines, player);
        bool const has_device =
            std::any_of(section.begin(), section.end(), [](ConfLine const& line) {
                return says(line.key, "device") && !line.value.empty();
            });
        for (ConfLine const& line : section) add_wishes(line, has_device, wishes);
    }
    std::stable_sort(wishes.begin(), wishes.end(),
                     [](Wish const& a, Wish const& b) { return a.line < b.line; });
    return grant(std::move(wishes));
}

int parse_indexed(std::string const& text) {
    return first_number(text);
}
