#include "screens/help_own_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace {

constexpr float BLUE_ANCHOR = 23.0F; // columns of the captions, key units
constexpr float BLUE_ALT_ANCHOR = 15.0F;
constexpr float KEYBOARD_FOOT = 6.8F; // that column stands among keys: its captions lie below them
constexpr float FAR_SIDE = 15.25F;    // the keypad's side begins here
constexpr float LINE_ROOM = 0.38F;    // between two captions, key units
constexpr float TWO_LINES_ROOM = 0.85F; // below one of two lines
constexpr float LOWEST_CAPTION = 10.2F; // below the keyboard's top; under it stand the names
constexpr std::array<float, 5> LEADS{0.0F, 0.2F, -0.2F, 0.4F, -0.4F};

// How far down a key's leader ends.
float leader_end(KbKey const& key, float lead, float anchor) {
    return key.y + key.h / 2 + std::abs(key.x + (0.5F + lead) * key.w - anchor);
}

float end_of(Anno const& anno, float anchor) {
    KbKey const* const key = find_key(anno);
    return key != nullptr ? leader_end(*key, anno.lead, anchor) : 0.0F;
}

bool has_room(std::vector<Anno> const& annos, Anno const& anno, float anchor) {
    float const end = end_of(anno, anchor);
    if (end > LOWEST_CAPTION || (anchor == BLUE_ALT_ANCHOR && end < KEYBOARD_FOOT)) return false;
    return std::none_of(annos.begin(), annos.end(), [&](Anno const& other) {
        if (*other.text == '\0') return false;
        float const other_end = end_of(other, anchor);
        Anno const& upper = other_end < end ? other : anno;
        bool const two_lines = std::string_view(upper.text).find('\n') != std::string_view::npos;
        return std::abs(other_end - end) < (two_lines ? TWO_LINES_ROOM : LINE_ROOM);
    });
}

// Adds those of `wanted` from `at` on so that no two captions meet, by moving where their leaders
// leave the keys. False, and nothing added, if that cannot be.
bool place(std::vector<Anno>& annos, std::vector<Anno> const& wanted, std::size_t at,
           float anchor) {
    if (at == wanted.size()) return true;
    for (float const lead : LEADS) {
        Anno anno = wanted[at];
        anno.lead = lead;
        if (!has_room(annos, anno, anchor)) continue;
        annos.push_back(anno);
        if (place(annos, wanted, at + 1, anchor)) return true;
        annos.pop_back();
    }
    return false;
}

// As many of them with captions as there is room for.
void place_all(std::vector<Anno>& annos, std::vector<Anno> wanted, float anchor) {
    while (!place(annos, wanted, 0, anchor)) {
        annos.push_back(wanted.back());
        annos.back().text = "";
        wanted.pop_back();
    }
}

std::size_t group_of(std::size_t player, KbKey const& key) {
    if (player == 0) return 0;
    return key.x >= FAR_SIDE ? 1 : 2;
}

// The drawn ones among a control's own keys: `first` takes the caption, `annos` the other marks.
void add_own_keys(PlayerAnnos& annos, PlayerAnnos& first, std::size_t player, Control control,
                  std::vector<SDL_Scancode> const& keys) {
    char const* caption = ANNOS_RED.at(static_cast<std::size_t>(control)).text;
    for (SDL_Scancode const code : keys) {
        KbKey const* const key = find_key(code);
        if (key == nullptr) continue;
        PlayerAnnos& to = *caption != '\0' ? first : annos;
        to[group_of(player, *key)].push_back({key->label, caption, TINT_PLAYER,
                                              static_cast<int>(player) + 1, 0, key->x, key->x, 1,
                                              1.5F, 0});
        caption = "";
    }
}

} // namespace

PlayerAnnos player_annos(KeyBindings const& keys) {
    PlayerAnnos annos;
    auto const own = [&](std::size_t player, std::size_t control) {
        return keys[player][control] != builtin_keys()[player][control];
    };
    for (std::size_t i = 0; i < ALL_CONTROLS.size(); ++i) { // the rows are in the controls' order
        if (!own(0, i)) annos[0].push_back(ANNOS_RED.at(i));
        if (!own(1, i)) annos[1].push_back(ANNOS_BLUE.at(i));
    }
    // This one's are left, right, handbrake, accelerate.
    constexpr std::array<std::size_t, 4> ALT_ROWS{0, 1, 3, 2};
    for (std::size_t row = 0; row < ALT_ROWS.size(); ++row) {
        if (!own(1, ALT_ROWS.at(row))) annos[2].push_back(ANNOS_BLUE_ALT.at(row));
    }
    PlayerAnnos first;
    for (std::size_t player : {0U, 1U}) {
        for (Control const control : ALL_CONTROLS) {
            if (own(player, static_cast<std::size_t>(control))) {
                add_own_keys(annos, first, player, control, keys_of(keys[player], control));
            }
        }
    }
    place_all(annos[0], first[0], OWN_RED_ANCHOR);
    place_all(annos[1], first[1], BLUE_ANCHOR);
    place_all(annos[2], first[2], BLUE_ALT_ANCHOR);
    return annos;
}
