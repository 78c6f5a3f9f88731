#pragma once

// Follows what happens to the window in whatever loop is running: text keeps the sharpness of the
// output's size.

#include "base/fonts.h"

#include <SDL.h>

class WindowWatch {
public:
    // Both outlive the watch.
    WindowWatch(SDL_Renderer* renderer, Fonts& fonts);
    ~WindowWatch();
    WindowWatch(WindowWatch const&) = delete;
    WindowWatch& operator=(WindowWatch const&) = delete;

private:
    static int SDLCALL on_event(void* watch, SDL_Event* event);
    void follow(SDL_WindowEvent const& event);

    SDL_Renderer* renderer_;
    Fonts& fonts_;
};

// Physical pixels per logical pixel of the renderer's output.
double output_scale(SDL_Renderer* renderer);
