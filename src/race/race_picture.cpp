#include "race/race_picture.h"

#include "base/screen.h"
#include "race/clocks.h"
#include "race/game_loop.h"
#include "race/game_over_choice.h"
#include "race/race_notices.h"
#include "records/ghost_trace.h"
#include "render/hud.h"
#include "render/overlays.h"
#include "render/text.h"
#include "render/track_view.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr int OSD_X = 8; // logical pixels
constexpr int OSD_Y = BAR_HEIGHT + 6;
constexpr std::uint32_t FADE_IN_MS = 600;

// One player's half of the picture, with what it takes from the other half.
struct ViewPicture {
    Player const& player;
    CarState const& car;
    Player const& other;
    CarState const& other_car;
    std::uint8_t winner_alpha; // strength of the winner's banner in this view, 0 for none
};

void draw_view(GameLoop const& g, RacePicture const& picture, ViewPicture const& v) {
    PlayerView const& view = v.player.view;
    auto const now_ms = static_cast<double>(g.sim.sim_time_ms);
    CarState ghost;
    bool const has_ghost =
        g.ghost_visible && pick_ghost(v.player, now_ms, STEP_MS, picture.alpha, &ghost);
    render_viewport(g.renderer, g.shown_tex, g.shown_w, g.shown_h, g.track, view, v.car,
                    v.other.view, v.other_car, has_ghost ? &ghost : nullptr);

    bool const counting = g.sim.countdown.active;
    render_hud(g.renderer, view.viewport, view, v.player.car, g.sim.laps,
               lap_clock(v.player, counting, now_ms), total_clock(v.player, counting, now_ms),
               g.fonts, g.ghost_visible);
    render_lap_overlay(g.renderer, view.viewport, view, g.fonts, picture.draw_tick);
    render_last_lap_flash(g.renderer, view.viewport, view, g.fonts, picture.draw_tick);
    if (v.winner_alpha != 0) {
        render_winner_overlay(g.renderer, view.viewport, g.fonts, v.winner_alpha);
    }
}

void draw_views(GameLoop const& g, RacePicture const& picture, std::uint8_t winner_alpha) {
    auto banner = [&](Player const& player) {
        return g.sim.winner == player.id ? winner_alpha : std::uint8_t{0};
    };
    Player const& red = g.sim.p1;
    Player const& blue = g.sim.p2;
    if (g.view_mode != 2) {
        draw_view(g, picture, {red, picture.red, blue, picture.blue, banner(red)});
    }
    if (g.view_mode != 1) {
        draw_view(g, picture, {blue, picture.blue, red, picture.red, banner(blue)});
    }
    if (g.view_mode == 0) render_divider(g.renderer, SCREEN_W, SCREEN_H);
}

void draw_fade_in(GameLoop& g, std::uint32_t now) {
    if (g.fade_in_tick == 0) return;
    std::uint32_t const elapsed = now - g.fade_in_tick;
    if (elapsed >= FADE_IN_MS) {
        g.fade_in_tick = 0;
        return;
    }
    double const strength = 1.0 - elapsed / static_cast<double>(FADE_IN_MS);
    SDL_SetRenderDrawBlendMode(g.renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(g.renderer, 0, 0, 0, static_cast<std::uint8_t>(strength * 255.0));
    SDL_RenderFillRect(g.renderer, nullptr);
}

// Over all else, so that the rest of the picture is as it would be without it.
void draw_notices(GameLoop const& g, RacePicture const& picture, float game_over_fade) {
    NoticePicture const what{g.renderer, g.fonts, g.notices, g.sim, picture.draw_tick};
    draw_view_notices(what, g.sim.p1, g.ghost_visible);
    draw_view_notices(what, g.sim.p2, g.ghost_visible);
    if (!g.sim.game_over) return;
    render_result(g.renderer, SCREEN_W, SCREEN_H, g.fonts, result_table(g.notices, g.sim),
                  game_over_fade);
}

// Something dark behind the warning line: its red is not to be read on grass.
void draw_osd_ground(GameLoop const& g, TTF_Font* font, int y) {
    int w = 0;
    int h = 0;
    if (!measure_text(font, text_scale(g.fonts), g.osd_text.c_str(), &w, &h)) return;
    SDL_Rect const ground{OSD_X - 3, y - 1, w + 6, h + 2};
    SDL_SetRenderDrawBlendMode(g.renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(g.renderer, 0, 0, 0, 190);
    SDL_RenderFillRect(g.renderer, &ground);
}

void draw_messages(GameLoop& g, std::uint32_t now) {
    if (!g.toast_text.empty() && now < g.toast_until) g.draw_toast(g.toast_text.c_str(), now);

    TTF_Font* font = g.fonts.hud_small;
    int const line_h =
        font == nullptr ? 18 : static_cast<int>(std::lround(TTF_FontHeight(font) / g.phys_scale));
    if (g.show_fps) {
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%.0f fps", g.fps);
        g.draw_osd(font, text.data(), OSD_X, OSD_Y, {180, 230, 180, 255});
    }
    if (!g.osd_text.empty() && now < g.osd_until) {
        draw_osd_ground(g, font, OSD_Y + line_h);
        g.draw_osd(font, g.osd_text.c_str(), OSD_X, OSD_Y + line_h, {240, 80, 70, 255});
    }
}

} // namespace

void draw_race(GameLoop& g, RacePicture const& picture) {
    SDL_SetRenderDrawColor(g.renderer, 0, 0, 0, 255);
    SDL_RenderClear(g.renderer);

    float game_over_fade = 0.0F;
    if (g.sim.game_over) {
        auto const elapsed = static_cast<float>(picture.draw_tick - g.sim.game_over_tick);
        game_over_fade = std::min(elapsed / static_cast<float>(GAME_OVER_FADE_MS), 1.0F);
    }
    auto const winner_alpha =
        static_cast<std::uint8_t>(std::roundf((1.0F - game_over_fade) * 255.0F));
    draw_views(g, picture, winner_alpha);
    if (g.sim.game_over) {
        render_game_over(g.renderer, SCREEN_W, SCREEN_H, g.fonts, game_over_fade);
    }
    draw_game_over_choice(g, picture.input_tick);
    draw_fade_in(g, picture.input_tick);
    draw_messages(g, picture.input_tick);
    draw_notices(g, picture, game_over_fade);
}
