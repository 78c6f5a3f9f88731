#include "render/overlays.h"

#include "platform/present.h"
#include "render/colors.h"
#include "render/hud.h"
#include "render/text.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr unsigned LAP_FADE_MS = 350;
constexpr unsigned LAP_ALPHA = 220;
constexpr unsigned FLASH_MS = 320; // each of the two flashes of the last lap
constexpr unsigned FLASH_PERIOD_MS = 420;
constexpr float DIMMING = 185.0F;

struct Size {
    int w = 0;
    int h = 0;
};

// 0 x 0 if the font is not open or the text cannot be measured.
Size size_of(Fonts const& fonts, TTF_Font* font, char const* text) {
    Size size;
    measure_text(font, text_scale(fonts), text, &size.w, &size.h);
    return size;
}

bool is_empty(Size size) {
    return size.w <= 0 || size.h <= 0;
}

int centred_x(SDL_Rect const& rect, Size size) {
    return rect.x + (rect.w - size.w) / 2;
}

// Text on its own black shadow, `shift` pixels to the lower right.
struct ShadowedText {
    TTF_Font* font;
    char const* text;
    SDL_Point at;
    int shift;
    SDL_Color color;
    std::uint8_t alpha;
    std::uint8_t shadow_alpha;
};

void draw_shadowed(SDL_Renderer* renderer, Fonts const& fonts, ShadowedText const& t) {
    double const scale = text_scale(fonts);
    draw_ttf(renderer, t.font, scale, t.text, t.at.x + t.shift, t.at.y + t.shift, BLACK, nullptr,
             nullptr, t.shadow_alpha);
    draw_ttf(renderer, t.font, scale, t.text, t.at.x, t.at.y, t.color, nullptr, nullptr, t.alpha);
}

// The second line of the lap overlay, below the time.
void draw_record_line(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts, int record,
                      int y, std::uint8_t alpha, std::uint8_t shadow_alpha) {
    bool const lap_record = record == 2;
    char const* text = lap_record ? "New Lap Record!" : "Personal Best!";
    SDL_Color const color = lap_record ? SDL_Color{255, 45, 45, 255} : SDL_Color{255, 255, 40, 255};
    Size const size = size_of(fonts, fonts.record, text);
    if (is_empty(size)) return;
    draw_shadowed(renderer, fonts,
                  {fonts.record, text, {centred_x(rect, size), y}, 2, color, alpha, shadow_alpha});
}

// Where a picture of this size goes so that it fills the screen as far as its proportions allow.
SDL_Rect fit(int picture_w, int picture_h, int width, int height) {
    double const ratio = static_cast<double>(picture_w) / picture_h;
    if (ratio > static_cast<double>(width) / height) {
        int const h = static_cast<int>(width / ratio);
        return {0, (height - h) / 2, width, h};
    }
    int const w = static_cast<int>(height * ratio);
    return {(width - w) / 2, 0, w, height};
}

} // namespace

void render_lap_overlay(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                        Fonts const& fonts, unsigned now) {
    if (now >= view.lap_overlay_until_ms || fonts.lap_time == nullptr) return;
    unsigned const left = view.lap_overlay_until_ms - now;
    unsigned const strength = left < LAP_FADE_MS ? left * LAP_ALPHA / LAP_FADE_MS : LAP_ALPHA;
    auto const alpha = static_cast<std::uint8_t>(strength);
    auto const shadow_alpha = static_cast<std::uint8_t>(2 * strength / 3);

    std::string const time = format_time_long(view.lap_overlay_time_ms);
    SDL_Color const color =
        view.lap_overlay_is_best ? SDL_Color{150, 250, 170, 255} : SDL_Color{245, 245, 245, 255};
    Size const size = size_of(fonts, fonts.lap_time, time.c_str());
    if (is_empty(size)) return;
    int const y = rect.y + (rect.h - size.h) / 2;
    draw_shadowed(
        renderer, fonts,
        {fonts.lap_time, time.c_str(), {centred_x(rect, size), y}, 3, color, alpha, shadow_alpha});
    if (view.lap_overlay_record != 0) {
        draw_record_line(renderer, rect, fonts, view.lap_overlay_record, y + size.h + size.h / 8,
                         alpha, shadow_alpha);
    }
}

void render_last_lap_flash(SDL_Renderer* renderer, SDL_Rect const& rect, PlayerView const& view,
                           Fonts const& fonts, unsigned now) {
    if (view.last_lap_flash_ms == 0 || fonts.lap_time == nullptr) return;
    unsigned const elapsed = now > view.last_lap_flash_ms ? now - view.last_lap_flash_ms : 0;
    if (elapsed >= 2 * FLASH_PERIOD_MS || elapsed % FLASH_PERIOD_MS >= FLASH_MS) return;
    char const* text = "Last Lap";
    Size const size = size_of(fonts, fonts.lap_time, text);
    if (is_empty(size)) return;
    int const y = rect.y + static_cast<int>(rect.h * 0.3) - size.h / 2;
    draw_shadowed(
        renderer, fonts,
        {fonts.lap_time, text, {centred_x(rect, size), y}, 2, {255, 70, 70, 255}, 255, 200});
}

void render_divider(SDL_Renderer* renderer, int width, int height) {
    SDL_Rect const line = {width / 2 - 2, 0, 4, height};
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderFillRect(renderer, &line);
}

void render_winner_overlay(SDL_Renderer* renderer, SDL_Rect const& rect, Fonts const& fonts,
                           std::uint8_t alpha) {
    if (alpha == 0) return;
    TTF_Font* font = fonts.winner != nullptr ? fonts.winner : fonts.lap_time;
    char const* text = "WINNER!";
    Size const size = size_of(fonts, font, text);
    if (is_empty(size)) return;
    int const y =
        rect.y + static_cast<int>(std::round(static_cast<float>(rect.h) * 0.25F)) - size.h / 2;
    draw_embossed(renderer, font, text_scale(fonts), text, centred_x(rect, size), y, {238, 185, 35},
                  {255, 248, 210}, {122, 72, 10}, alpha);
}

void render_game_over(SDL_Renderer* renderer, int width, int height, Fonts const& fonts,
                      float fade) {
    float const strength = std::clamp(fade, 0.0F, 1.0F);
    SDL_Rect const screen = {0, 0, width, height};
    SDL_Rect const below_bars = {0, BAR_HEIGHT, width, height - BAR_HEIGHT};
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, 0, 0, 0,
                           static_cast<std::uint8_t>(std::round(DIMMING * strength)));
    SDL_RenderFillRect(renderer, &below_bars);

    auto const alpha = static_cast<std::uint8_t>(std::round(strength * 255.0F));
    char const* title = "GAME OVER";
    Size const title_size = size_of(fonts, fonts.lap_time, title);
    draw_embossed(renderer, fonts.lap_time, text_scale(fonts), title, centred_x(screen, title_size),
                  height / 2 - title_size.h, {225, 55, 55}, {255, 165, 150}, {105, 20, 20}, alpha);
    char const* hint = "press SPACE or ESC for the menu";
    Size const hint_size = size_of(fonts, fonts.hud_time, hint);
    draw_ttf(renderer, fonts.hud_time, text_scale(fonts), hint, centred_x(screen, hint_size),
             height / 2 + hint_size.h, {220, 225, 235, 255}, nullptr, nullptr, alpha);
}

void render_intro(SDL_Renderer* renderer, SDL_Texture* picture, int picture_w, int picture_h,
                  int width, int height, Fonts const& fonts, unsigned now, char const* hint) {
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    if (picture != nullptr && picture_w > 0 && picture_h > 0) {
        SDL_Rect const place = fit(picture_w, picture_h, width, height);
        SDL_RenderCopy(renderer, picture, nullptr, &place);
    }
    if (now % 1000 < 600) {
        char const* text = "PRESS SPACE TO START RACING.";
        Size const size = size_of(fonts, fonts.intro, text);
        SDL_Point const at = {(width - size.w) / 2, height - size.h - 28};
        draw_shadowed(renderer, fonts, {fonts.intro, text, at, 2, {255, 230, 80, 255}, 255, 255});
    }
    if (hint != nullptr) {
        Size const size = size_of(fonts, fonts.hud_small, hint);
        draw_shadowed(renderer, fonts,
                      {fonts.hud_small,
                       hint,
                       {(width - size.w) / 2, height - size.h - 8},
                       1,
                       {210, 225, 255, 255},
                       255,
                       255});
    }
    present_frame(renderer);
}
