#include "screens/menu_render.h"

#include "platform/present.h"
#include "screens/menu_drawing.h"
#include "screens/night_sky.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace {

constexpr unsigned INTRO_MS = 900; // from here on the menu itself shows
constexpr unsigned SPIN_MS = 1000; // how long the title art spins in
constexpr int GRADIENT_ROWS = 256;
constexpr int CREDIT_STRIPS = 64;

struct Gradient {
    SDL_Texture* texture = nullptr; // freed with its renderer, if not before
    SDL_Renderer* renderer = nullptr;
};

Gradient& gradient() {
    static Gradient kept;
    return kept;
}

std::uint32_t gradient_pixel(int row) {
    SDL_Color const sky = night_sky(static_cast<double>(row) / (GRADIENT_ROWS - 1));
    return std::uint32_t{sky.r} << 24U | std::uint32_t{sky.g} << 16U | std::uint32_t{sky.b} << 8U |
           sky.a;
}

SDL_Texture* make_gradient(SDL_Renderer* renderer) {
    std::array<std::uint32_t, GRADIENT_ROWS> rows{};
    for (int i = 0; i < GRADIENT_ROWS; ++i) rows[static_cast<std::size_t>(i)] = gradient_pixel(i);
    SDL_Texture* texture = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_RGBA8888,
                                             SDL_TEXTUREACCESS_STATIC, 1, GRADIENT_ROWS);
    if (texture == nullptr) return nullptr;
    SDL_UpdateTexture(texture, nullptr, rows.data(), 4);
    SDL_SetTextureScaleMode(texture, SDL_ScaleModeLinear);
    return texture;
}

// The whole output, margins beside the logical surface included.
void draw_background(MenuFrame const& frame) {
    int w = 0;
    int h = 0;
    SDL_GetRendererOutputSize(frame.renderer, &w, &h);
    SDL_RenderSetLogicalSize(frame.renderer, 0, 0);
    draw_bg_gradient(frame.renderer, w, h);
    SDL_RenderSetLogicalSize(frame.renderer, frame.W, frame.H);
}

void draw_fade(MenuFrame const& frame, float fade) {
    if (fade <= 0.0F) return;
    SDL_RenderSetLogicalSize(frame.renderer, 0, 0);
    SDL_SetRenderDrawBlendMode(frame.renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(frame.renderer, 0, 0, 0,
                           static_cast<std::uint8_t>(std::min(fade, 1.0F) * 255.0F));
    SDL_RenderFillRect(frame.renderer, nullptr);
    SDL_RenderSetLogicalSize(frame.renderer, frame.W, frame.H);
}

// Where the title art comes to rest: three fifths of the view's width, at its top.
SDL_Rect header_rest(SDL_Rect const& view, int img_w, int img_h) {
    int margin = view.w / 5;
    int w = view.w - 2 * margin;
    int h = w * img_h / img_w;
    if (h > view.h) {
        h = view.h;
        w = img_w * view.h / img_h;
        margin = (view.w - w) / 2;
    }
    return {view.x + margin, view.y, w, h};
}

int round_half_up(float value) {
    return static_cast<int>(value + 0.5F);
}

void draw_header(MenuFrame const& frame, SDL_Texture* header, SDL_Rect const& rest,
                 unsigned since_intro) {
    bool const spinning = since_intro < SPIN_MS;
    float const left = spinning ? 1.0F - static_cast<float>(since_intro) / SPIN_MS : 0.0F;
    float const unwound = left * left * left; // 1 at the start, 0 at rest
    float const scale = 2.5F - 1.5F * (1.0F - unwound);
    auto const w = static_cast<float>(rest.w);
    auto const h = static_cast<float>(rest.h);
    float const centre_x = static_cast<float>(rest.x) + w / 2.0F;
    float const centre_y = static_cast<float>(frame.view.y) + h / 2.0F +
                           0.9F * static_cast<float>(frame.view.h) * unwound;
    SDL_Rect const target{round_half_up(centre_x - scale * w / 2.0F),
                          round_half_up(centre_y - scale * h / 2.0F), round_half_up(scale * w),
                          round_half_up(scale * h)};
    SDL_SetTextureScaleMode(header, spinning ? SDL_ScaleModeLinear : SDL_ScaleModeNearest);
    SDL_RenderCopyEx(frame.renderer, header, nullptr, &target, static_cast<double>(unwound) * 180.0,
                     nullptr, SDL_FLIP_NONE);
}

void draw_heading(MenuFrame const& frame, MenuLabel const& label, float x, float y) {
    draw_label(frame.renderer, label, place_x(frame.view, x) - label.w / 2,
               place_y(frame.view, y) - label.h / 2, {255, 255, 255, 255});
}

// Brightness of a strip of the credits: two waves across the line, one passing in 10 s.
int shimmer(int strip, unsigned now) {
    double const u = (strip + 0.5) / CREDIT_STRIPS;
    double const s = std::sin((2.0 * u - (now / 1000.0) * 0.1) * 2.0 * std::numbers::pi);
    return static_cast<int>((s * 0.5 + 0.5) * 155.0 + 95.0);
}

void draw_credits(MenuFrame const& frame, MenuLabel const& credits) {
    if (!credits.tex || credits.w <= 0 || credits.h <= 0) return;
    SDL_Rect const& view = frame.view;
    int const x = view.x + (view.w - credits.w) / 2;
    int const y = view.y + view.h - credits.h - (view.h < 200 ? 4 : view.h / 40);
    int tex_w = 0;
    int tex_h = 0;
    SDL_QueryTexture(credits.tex.get(), nullptr, nullptr, &tex_w, &tex_h);
    for (int i = 0; i < CREDIT_STRIPS; ++i) {
        int const from = i * tex_w / CREDIT_STRIPS;
        int const left = i * credits.w / CREDIT_STRIPS;
        SDL_Rect const source{from, 0, (i + 1) * tex_w / CREDIT_STRIPS - from, tex_h};
        SDL_Rect const target{x + left, y, (i + 1) * credits.w / CREDIT_STRIPS - left, credits.h};
        if (source.w <= 0 || target.w <= 0) continue;
        int const shade = shimmer(i, frame.now);
        SDL_SetTextureColorMod(credits.tex.get(), static_cast<std::uint8_t>(0.93 * shade),
                               static_cast<std::uint8_t>(0.96 * shade),
                               static_cast<std::uint8_t>(shade));
        SDL_RenderCopy(frame.renderer, credits.tex.get(), &source, &target);
    }
}

void draw_ring(SDL_Renderer* renderer, SDL_Texture* ring, SDL_Rect const& target, SDL_Color tint) {
    SDL_SetTextureColorMod(ring, tint.r, tint.g, tint.b);
    SDL_SetTextureAlphaMod(ring, tint.a);
    SDL_RenderCopy(renderer, ring, nullptr, &target);
}

void draw_help_button(MenuFrame const& frame, MenuLabel const& label, TextureHandle const& ring,
                      bool hover) {
    SDL_Color const colour = hover ? SDL_Color{210, 225, 255, 255} : DIM;
    SDL_Rect const box = help_button_box(label, frame.view);
    auto const shift = [&box](double share) {
        return static_cast<int>(std::lround(share * box.w));
    };
    if (ring) {
        SDL_Rect const shadow{box.x + shift(0.02), box.y + shift(0.05), box.w, box.h};
        draw_ring(frame.renderer, ring.get(), shadow, {0, 0, 0, 89});
        draw_ring(frame.renderer, ring.get(), box, colour);
    }
    draw_label(frame.renderer, label, box.x + (box.w - label.w) / 2 + shift(0.03),
               box.y + (box.h - label.h) / 2, colour);
}

void draw_cursor(MenuFrame const& frame, MenuCursor const& cursor) {
    if (!cursor_shows(cursor, frame.now) || !cursor.tex || cursor.src.h <= 0) return;
    int const h = std::max(1, static_cast<int>(std::lround(CURSOR_HEIGHT * frame.H)));
    double const w_exact = static_cast<double>(cursor.src.w) * h / cursor.src.h;
    SDL_Rect const target{static_cast<int>(cursor.x), static_cast<int>(cursor.y),
                          static_cast<int>(std::lround(w_exact)), h};
    SDL_RenderCopy(frame.renderer, cursor.tex.get(), &cursor.src, &target);
}

} // namespace

void draw_bg_gradient(SDL_Renderer* renderer, int w, int h) {
    Gradient& kept = gradient();
    if (kept.renderer != renderer) kept = {make_gradient(renderer), renderer};
    if (kept.texture == nullptr) return;
    SDL_Rect const target{0, 0, w, h};
    SDL_RenderCopy(renderer, kept.texture, nullptr, &target);
}

void release_bg_gradient() {
    if (gradient().texture != nullptr) SDL_DestroyTexture(gradient().texture);
    gradient() = {};
}

void render_menu(SDL_Renderer* renderer, TextureHandle const& header, int img_w, int img_h, int W,
                 int H, MenuLabel const& heading_mode, MenuLabel const& heading_names,
                 MenuLabel const& heading_tracks, GameMode const& mode, PlayerNames const& names,
                 std::vector<TrackThumb> const& thumbs, int selected_row, bool have_best,
                 StartButton& start, bool track_chosen, MenuLabel const& credits,
                 MenuCursor const& cursor, SparkleFx& sparkle, unsigned now,
                 MenuLabel const& help_label, TextureHandle const& help_ring, bool help_hover,
                 float fade, TrackThumb const* extra, float slide, float extra_alpha, float swap_t,
                 SDL_Rect const* from_rects,
                 std::function<void(SDL_Rect const& view)> const& more) {
    MenuFrame const frame{renderer, W, H, menu_view(W, H), now};
    unsigned const since_intro = now - sparkle.intro_at;
    bool const has_header = header && img_w > 0 && img_h > 0;
    SDL_SetRenderDrawColor(renderer, 6, 10, 32, 255);
    SDL_RenderClear(renderer);
    draw_background(frame);
    if (has_header) {
        SDL_Rect const rest = header_rest(frame.view, img_w, img_h);
        draw_header(frame, header.get(), rest, since_intro);
        if (since_intro >= INTRO_MS) {
            update_sparkles(sparkle, frame.view.h, now);
            draw_sparkles(renderer, sparkle, img_w, img_h, rest, now);
            draw_heading(frame, heading_mode, MODE_X, HEADING_Y);
            draw_heading(frame, heading_names, NAMES_X, HEADING_Y);
            draw_heading(frame, heading_tracks, TRACKS_X, TRACKS_HEADING_Y);
            draw_track_row(frame,
                           {thumbs, selected_row, {extra, slide, extra_alpha, swap_t, from_rects}},
                           have_best);
            draw_mode_block(frame, mode);
            draw_name_rows(frame, names);
            draw_start_button(frame, start, cursor, track_chosen);
        }
    }
    draw_credits(frame, credits);
    if (help_label.tex && since_intro >= INTRO_MS) {
        draw_help_button(frame, help_label, help_ring, help_hover);
    }
    if (more && since_intro >= INTRO_MS) more(frame.view);
    draw_cursor(frame, cursor);
    draw_fade(frame, fade);
    present_frame(renderer);
}
