#include "screens/menu_layout.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int THUMB_GAP = 16; // logical pixels

// A box for an empty label would be one that nobody can see.
bool is_empty(MenuLabel const& label) {
    return label.w <= 0 || label.h <= 0;
}

// The rows' spacing rules share this shape: a share of the label, with a floor for small ones.
int share_or(int height, int limit, int divisor, int floor) {
    return height < limit ? floor : height / divisor;
}

SDL_Rect label_rect(MenuLabel const& label, int x, int centre_y) {
    return {x, centre_y - label.h / 2, label.w, label.h};
}

void lay_out_row(std::vector<TrackThumb> const& thumbs, TrackThumb const* extra,
                 SDL_Rect const& view, std::vector<SDL_Rect>& out) {
    if (thumbs.empty() && extra == nullptr) return;
    int total = extra != nullptr ? extra->w + THUMB_GAP : 0;
    for (TrackThumb const& thumb : thumbs) total += thumb.w + THUMB_GAP;
    int x = view.x + (view.w - (total - THUMB_GAP)) / 2;
    int const centre_y = place_y(view, THUMBS_Y);
    auto const append = [&](TrackThumb const& thumb) {
        out.push_back({x, centre_y - thumb.h / 2, thumb.w, thumb.h});
        x += thumb.w + THUMB_GAP;
    };
    for (TrackThumb const& thumb : thumbs) append(thumb);
    if (extra != nullptr) append(*extra);
}

int blend(int from, int to, float share) {
    return static_cast<int>(static_cast<float>(from) + static_cast<float>(to - from) * share +
                            0.5F);
}

} // namespace

SDL_Rect menu_view(int W, int H) {
    if (H * 16 > W * 9) {
        int const h = W * 9 / 16;
        return {0, (H - h) / 2, W, h};
    }
    int const w = H * 16 / 9;
    return {(W - w) / 2, 0, w, H};
}

int place_x(SDL_Rect const& view, float share) {
    return view.x + static_cast<int>(share * static_cast<float>(view.w));
}

int place_y(SDL_Rect const& view, float share) {
    return view.y + static_cast<int>(share * static_cast<float>(view.h));
}

int row_y(SDL_Rect const& view, int row) {
    return place_y(view, row == 0 ? FIRST_ROW_Y : SECOND_ROW_Y);
}

bool inside(SDL_Rect const& box, float x, float y) {
    return x >= static_cast<float>(box.x) && x < static_cast<float>(box.x + box.w) &&
           y >= static_cast<float>(box.y) && y < static_cast<float>(box.y + box.h);
}

ModeBlock mode_block(GameMode const& mode, SDL_Rect const& view) {
    int const lead = share_or(mode.arrow.h, 20, 4, 4) + mode.arrow.w;
    int const w = lead + std::max(mode.practice.w, mode.race.w);
    int const x = place_x(view, MODE_X) - w / 2;
    return {x, x + lead, w};
}

SDL_Rect mode_row_box(GameMode const& mode, SDL_Rect const& view, int row) {
    ModeBlock const block = mode_block(mode, view);
    int const h = std::max(mode.practice.h, mode.race.h);
    return {block.x, row_y(view, row) - h / 2, block.w, h};
}

SDL_Rect laps_row(GameMode const& mode, SDL_Rect const& view, SDL_Rect* options) {
    int const centre_y = row_y(view, MODE_RACE);
    int const step = share_or(mode.laps_caption.h, 18, 2, 8);
    int const caption_x = mode_block(mode, view).label_x + mode.race.w + 2 * step;
    int x = caption_x + mode.laps_caption.w + step;
    for (std::size_t i = 0; i < mode.lap_options.size(); ++i) {
        options[i] = label_rect(mode.lap_options[i], x, centre_y);
        x += mode.lap_options[i].w + step;
    }
    return label_rect(mode.laps_caption, caption_x, centre_y);
}

SDL_Rect lap_option_box(GameMode const& mode, SDL_Rect const& view, std::size_t option) {
    if (is_empty(mode.lap_options[option])) return {};
    std::array<SDL_Rect, LAP_COUNTS.size()> options{};
    laps_row(mode, view, options.data());
    int const margin = share_or(mode.laps_caption.h, 18, 4, 4);
    SDL_Rect const& rect = options[option];
    return {rect.x - margin, rect.y - margin, rect.w + 2 * margin, rect.h + 2 * margin};
}

MenuLabel const& name_label(PlayerNames const& names, int row) {
    return row == 0 ? names.red_label : names.blue_label;
}

int name_label_x(PlayerNames const& names, SDL_Rect const& view, int row) {
    MenuLabel const& label = name_label(names, row);
    return place_x(view, NAMES_X) - share_or(label.h, 27, 3, 8) - label.w;
}

SDL_Rect name_row_box(PlayerNames const& names, SDL_Rect const& view, int row) {
    MenuLabel const& label = name_label(names, row);
    if (is_empty(label)) return {};
    int const x = name_label_x(names, view, row);
    int const pad = share_or(label.h, 21, 3, 6);
    return {x, row_y(view, row) - label.h / 2 - pad, view.x + view.w - x, label.h + 2 * pad};
}

int help_button_size(MenuLabel const& help_label) {
    return std::max(8, static_cast<int>(std::lround(1.1 * help_label.h)));
}

SDL_Rect help_button_box(MenuLabel const& help_label, SDL_Rect const& view) {
    if (is_empty(help_label)) return {};
    int const size = help_button_size(help_label);
    int const margin = std::max(2, static_cast<int>(std::lround(0.015 * view.h)));
    return {view.x + view.w - margin - size, view.y + view.h - margin - size, size, size};
}

SDL_Rect start_button_box(StartButton const& button, SDL_Rect const& view) {
    int const h = std::max(1, static_cast<int>(START_HEIGHT * static_cast<float>(view.h)));
    int const w = std::max(1, static_cast<int>(std::lround(h * button.aspect)));
    return {view.x + view.w / 2 - w / 2, place_y(view, START_Y) - h / 2, w, h};
}

void track_row_layout(std::vector<TrackThumb> const& thumbs, SDL_Rect const& view,
                      std::vector<SDL_Rect>& out) {
    lay_out_row(thumbs, nullptr, view, out);
}

void track_row_layout(std::vector<TrackThumb> const& thumbs, TrackThumb const& extra,
                      SDL_Rect const& view, std::vector<SDL_Rect>& out) {
    lay_out_row(thumbs, &extra, view, out);
}

void glide(SDL_Rect& rect, SDL_Rect const& from, SDL_Rect const& to, float share) {
    rect.x = blend(from.x, to.x, share);
    rect.y = blend(from.y, to.y, share);
}
