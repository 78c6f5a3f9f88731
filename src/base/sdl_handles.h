#pragma once

// Owning handles for SDL objects: each frees its object when it is replaced or goes.

#include <SDL.h>
#include <SDL_ttf.h>

#include <memory>

struct SDL_Texture_Deleter {
    void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
};
struct SDL_Surface_Deleter {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
struct TTF_Font_Deleter {
    void operator()(TTF_Font* font) const { TTF_CloseFont(font); }
};

using TextureHandle = std::unique_ptr<SDL_Texture, SDL_Texture_Deleter>;
using SurfaceHandle = std::unique_ptr<SDL_Surface, SDL_Surface_Deleter>;
using FontHandle = std::unique_ptr<TTF_Font, TTF_Font_Deleter>;
