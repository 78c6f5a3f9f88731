#pragma once

// Where a pad stands on the menu. Everything that keys or mouse can choose is an item with a box;
// a direction goes to the item that lies nearest that way.

#include <SDL.h>

#include <cstdint>
#include <vector>

struct MenuScreen;

enum class FocusKind : std::uint8_t { Mode, Laps, Name, Switch, Track, Extra, Start, Help };

struct FocusItem {
    FocusKind kind = FocusKind::Track;
    int index = 0; // the mode, the lap option, the name, the switch or the thumbnail of the row
    SDL_Rect box{};
};

// All that can be chosen at this moment.
std::vector<FocusItem> focus_items(MenuScreen& menu, unsigned now);
// The item that has the focus; another one if it has gone. Null only on an empty menu.
FocusItem const* focused(std::vector<FocusItem> const& items, FocusItem const& focus);
// The item nearest to `from` in direction (dx, dy), one of which is 0; null if there is none.
FocusItem const* neighbour(std::vector<FocusItem> const& items, FocusItem const& from, int dx,
                           int dy);

void draw_focus(SDL_Renderer* renderer, SDL_Rect const& box, unsigned now);
