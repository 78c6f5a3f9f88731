#include "screens/help_own_keys.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr std::array<float, 3> ANCHORS{0.96F, 23.0F, 15.0F}; // columns of the captions, key units
constexpr float FAR_SIDE = 15.25F;                           // the keypad's side begins here
constexpr float CAPTION_ROOM = 0.75F;                        // between two captions, key units
constexpr float LOWEST_CAPTION = 10.2F; // below the keyboard's top; under it stand the names

// How far down a key's leader ends.
float leader_end(KbKey const& key, float lead, float anchor) {
    return key.y + key.h / 2 + std::abs(key.x + (0.5F + lead) * key.w - anchor);
}

bool has_room(std::vector<Anno> const& annos, float end, float anchor) {
    if (end > LOWEST_CAPTION) return false;
    for (Anno const& anno : annos) {
        KbKey const* const key = find_key(anno);
        if (key == nullptr || *anno.text == '\0') continue;
        if (std::abs(leader_end(*key, anno.lead, anchor) - end) < CAPTION_ROOM) return false;
    }
    return true;
}

// Puts the caption where the leader meets no other, if there is such a place.
bool find_room(std::vector<Anno> const& annos, Anno& anno, KbKey const& key, float anchor) {
    for (float const lead : {0.0F, 0.2F, -0.2F, 0.4F, -0.4F}) {
        anno.lead = lead;
        if (has_room(annos, leader_end(key, lead, anchor), anchor)) return true;
    }
    return false;
}

std::size_t group_of(std::size_t player, KbKey const& key) {
    if (player == 0) return 0;
    return key.x >= FAR_SIDE ? 1 : 2;
}

void add_own_keys(PlayerAnnos& annos, std::size_t player, Control control,
                  std::vector<SDL_Scancode> const& keys) {
    char const* caption = ANNOS_RED.at(static_cast<std::size_t>(control)).text;
    for (SDL_Scancode const code : keys) {
        KbKey const* const key = find_key(code);
        if (key == nullptr) continue;
        std::size_t const group = group_of(player, *key);
        Anno anno{key->label, caption, TINT_PLAYER, static_cast<int>(player) + 1,
                  0,          key->x,  key->x,      1,
                  1.5F,       0};
        bool const fits = *caption != '\0' && find_room(annos[group], anno, *key, ANCHORS[group]);
        if (fits)
            caption = "";
        else
            anno.text = "";
        annos[group].push_back(anno);
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
    for (std::size_t row = 0; row < ALT_ROWS.size(); ++row)
        if (!own(1, ALT_ROWS.at(row))) annos[2].push_back(ANNOS_BLUE_ALT.at(row));
    for (std::size_t player : {0U, 1U})
        for (Control const control : ALL_CONTROLS)
            if (own(player, static_cast<std::size_t>(control)))
                add_own_keys(annos, player, control, keys_of(keys[player], control));
    return annos;
}
