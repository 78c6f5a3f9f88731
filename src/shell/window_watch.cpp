#include "shell/window_watch.h"

#include "base/screen.h"

WindowWatch::WindowWatch(SDL_Renderer* renderer, Fonts& fonts)
    : renderer_(renderer), fonts_(fonts) {
    SDL_AddEventWatch(on_event, this);
}

WindowWatch::~WindowWatch() {
    SDL_DelEventWatch(on_event, this);
}

int WindowWatch::on_event(void* watch, SDL_Event* event) {
    if (event->type == SDL_WINDOWEVENT) static_cast<WindowWatch*>(watch)->follow(event->window);
    return 0;
}

void WindowWatch::follow(SDL_WindowEvent const& event) {
    if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED) fonts_.fit(output_scale(renderer_));
}

double output_scale(SDL_Renderer* renderer) {
    int h = 0;
    SDL_GetRendererOutputSize(renderer, nullptr, &h);
    return h < 1 ? 1.0 : static_cast<double>(h) / SCREEN_H;
}
