#include "screens/fullscreen.h"

namespace {

constexpr int FRAME_H = 32;               // a title bar, more or less
constexpr char const* SIZED = "windowed"; // marks a window that has had its size

// Whether somebody manages the window, which shows by its frame: a manager draws one soon. Where
// frames cannot be asked for there always is one.
bool is_managed(SDL_Window* window) {
    for (int waited = 0; waited < 20; ++waited) {
        int top = 0;
        int left = 0;
        if (SDL_GetWindowBordersSize(window, &top, &left, nullptr, nullptr) != 0) return true;
        if (top > 0 || left > 0) return true;
        SDL_Delay(10);
        SDL_PumpEvents();
    }
    return false;
}

bool has_room(int display, SDL_Point size) {
    SDL_Rect usable{};
    if (display < 0 || SDL_GetDisplayUsableBounds(display, &usable) != 0) return true;
    return usable.w >= size.x && usable.h >= size.y + FRAME_H;
}

// A window that has been in full screen from the start has no size of its own yet.
void give_size(SDL_Window* window) {
    SDL_SetWindowData(window, SIZED, window);
    SDL_SetWindowSize(window, WINDOW_W, WINDOW_H);
}

// Where the window has no room it is maximised over its own size. Without a window manager nothing
// would come of that but the corner of a window larger than the screen: it stays as it is.
void settle(SDL_Window* window) {
    bool const sized = SDL_GetWindowData(window, SIZED) != nullptr;
    SDL_Point size{WINDOW_W, WINDOW_H};
    if (sized) SDL_GetWindowSize(window, &size.x, &size.y);
    if (has_room(SDL_GetWindowDisplayIndex(window), size)) {
        if (!sized) give_size(window);
        return;
    }
    if (!is_managed(window)) return;
    if (!sized) give_size(window);
    SDL_MaximizeWindow(window);
}

} // namespace

bool has_room_for_window(int display) {
    return has_room(display, {WINDOW_W, WINDOW_H});
}

void toggle_fullscreen(SDL_Window* window, bool& fullscreen) {
    bool const was_window =
        window != nullptr && (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP) == 0;
    fullscreen = !fullscreen;
    if (was_window) SDL_SetWindowData(window, SIZED, window);
    SDL_SetWindowFullscreen(window, fullscreen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0);
    if (!fullscreen && window != nullptr) settle(window);
}
