#include "screens/menu_focus.h"

#include "screens/menu_screen.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

constexpr int FOCUS_MARGIN = 5; // logical pixels between an item and its frame
constexpr int FOCUS_WIDTH = 2;
// A step sideways counts for as much as this many in the direction that was asked for.
constexpr int SIDEWAYS = 3;

// Left and right stay on a row: what lies further up or down than along is not meant. Up and down
// always lead somewhere.
bool is_meant(int along, int across, bool sideways) {
    return along > 0 && (!sideways || across <= along);
}

SDL_Point centre(SDL_Rect const& box) {
    return {box.x + box.w / 2, box.y + box.h / 2};
}

class Items {
public:
    void add(FocusKind kind, int index, SDL_Rect const& box) {
        if (box.w > 0 && box.h > 0) list.push_back({kind, index, box});
    }
    std::vector<FocusItem> list;
};

void add_modes(Items& items, GameMode const& mode, SDL_Rect const& view) {
    for (int row : {MODE_PRACTICE, MODE_RACE}) {
        items.add(FocusKind::Mode, row, mode_row_box(mode, view, row));
    }
    if (mode.selected != MODE_RACE) return;
    for (std::size_t i = 0; i < mode.lap_options.size(); ++i) {
        items.add(FocusKind::Laps, static_cast<int>(i), lap_option_box(mode, view, i));
    }
}

// A name's row reaches to the edge of the view and close to the other's; its frame is no wider than
// a long name, and leaves the other alone.
SDL_Rect name_box(PlayerNames const& names, SDL_Rect const& view, int row) {
    SDL_Rect box = name_row_box(names, view, row);
    box.w = std::min(box.w, view.w / 5);
    return {box.x, box.y + FOCUS_MARGIN, box.w, box.h - 2 * FOCUS_MARGIN};
}

void add_tracks(Items& items, MenuTracks& tracks, SDL_Rect const& view, unsigned now) {
    std::vector<SDL_Rect> const rects = track_rects(tracks, view, now);
    for (std::size_t i = 0; i < rects.size(); ++i) {
        bool const in_row = i < tracks.thumbs.size();
        items.add(in_row ? FocusKind::Track : FocusKind::Extra, in_row ? static_cast<int>(i) : 0,
                  rects[i]);
    }
}

} // namespace

std::vector<FocusItem> focus_items(MenuScreen& menu, unsigned now) {
    SDL_Rect const view = menu_view(menu.W, menu.H);
    Items items;
    add_tracks(items, menu.tracks, view, now);
    add_modes(items, menu.mode, view);
    for (int row : {0, 1}) items.add(FocusKind::Name, row, name_box(menu.names, view, row));
    for (Switch const which : ALL_SWITCHES) {
        items.add(FocusKind::Switch, static_cast<int>(which),
                  switch_box(menu.switches, switch_places(menu), which));
    }
    if (menu.start.tex && menu.tracks.selected_track != 0) {
        items.add(FocusKind::Start, 0, start_button_box(menu.start, view));
    }
    items.add(FocusKind::Help, 0, help_button_box(menu.help_label, view));
    return std::move(items.list);
}

FocusItem const* focused(std::vector<FocusItem> const& items, FocusItem const& focus) {
    auto const at = std::find_if(items.begin(), items.end(), [&focus](FocusItem const& item) {
        return item.kind == focus.kind && item.index == focus.index;
    });
    if (at != items.end()) return &*at;
    return items.empty() ? nullptr : &items.front();
}

FocusItem const* neighbour(std::vector<FocusItem> const& items, FocusItem const& from, int dx,
                           int dy) {
    SDL_Point const here = centre(from.box);
    FocusItem const* best = nullptr;
    int least = std::numeric_limits<int>::max();
    for (FocusItem const& item : items) {
        SDL_Point const there = centre(item.box);
        int const along = (there.x - here.x) * dx + (there.y - here.y) * dy;
        int const across = std::abs((there.x - here.x) * dy) + std::abs((there.y - here.y) * dx);
        if (!is_meant(along, across, dx != 0) || along + SIDEWAYS * across >= least) continue;
        least = along + SIDEWAYS * across;
        best = &item;
    }
    return best;
}

void draw_focus(SDL_Renderer* renderer, SDL_Rect const& box, unsigned now) {
    double const wave = 0.5 + 0.5 * std::sin(now / 180.0);
    SDL_SetRenderDrawBlendMode(renderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer, 190, 90, 255, static_cast<std::uint8_t>(170.0 + 85.0 * wave));
    for (int i = 0; i < FOCUS_WIDTH; ++i) {
        int const m = FOCUS_MARGIN + i;
        SDL_Rect const frame{box.x - m, box.y - m, box.w + 2 * m, box.h + 2 * m};
        SDL_RenderDrawRect(renderer, &frame);
    }
}
