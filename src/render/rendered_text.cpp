#include "render/rendered_text.h"

#include "render/second_face.h"

#include <cmath>

RenderedText render_text(SDL_Renderer* renderer, TTF_Font* font, char const* text,
                         SDL_Color color) {
    if (font == nullptr || text == nullptr || *text == '\0') return {};
    SurfaceHandle const surface = render_in_faces(font, text, color);
    if (!surface) return {};
    TextureHandle texture(SDL_CreateTextureFromSurface(renderer, surface.get()));
    if (!texture) return {};
    return {std::move(texture), surface->w, surface->h};
}

int to_logical(int pixels, double scale) {
    return scale > 0.0 ? static_cast<int>(std::lround(pixels / scale)) : pixels;
}
