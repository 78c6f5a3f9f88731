#include "screens/fullscreen.h"

namespace {

constexpr int FRAME_H = 32;               // a title bar, more or less
constexpr char const* SIZED = "windowed"; // marks a window that has had its size

// A window manager answers soon; without one nobody does.
bool becomes_maximised(SDL_Window* window) {
    for (int waited = 0; waited < 20; ++waited) {
        if ((SDL_GetWindowFlags(window) & SDL_WINDOW_MAXIMIZED) != 0) return true;
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

// The size of the window outside full screen; it has none of its own the first time.
SDL_Point size_in_window(SDL_Window* window) {
    SDL_Point size{WINDOW_W, WINDOW_H};
    if (SDL_GetWindowData(window, SIZED) != nullptr) {
        SDL_GetWindowSize(window, &size.x, &size.y);
    } else {
        SDL_SetWindowData(window, SIZED, window);
        SDL_SetWindowSize(window, size.x, size.y);
    }
    return size;
}

void settle(SDL_Window* window) {
    int const display = SDL_GetWindowDisplayIndex(window);
    if (has_room(display, size_in_window(window))) return;
    SDL_MaximizeWindow(window);
    SDL_Rect whole{};
    if (becomes_maximised(window) || SDL_GetDisplayBounds(display, &whole) != 0) return;
    SDL_SetWindowPosition(window, whole.x, whole.y);
    SDL_SetWindowSize(window, whole.w, whole.h); // rather than the corner of a larger one
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
