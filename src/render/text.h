#pragma once

// Text of the race screens. Fonts are opened at physical size and text is drawn at its size
// divided by `scale`, so that it stays sharp on a large display while positions stay logical.

#include <SDL.h>
#include <SDL_ttf.h>

#include <cstdint>
#include <string>

struct Fonts;

struct RGB {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
};

// `phys_scale` of the fonts, 1.0 if that is not above 0.
double text_scale(Fonts const& fonts);

// Size of a text in logical pixels. False, with both sizes 0, if the font is null or measuring
// fails.
bool measure_text(TTF_Font* font, double scale, char const* text, int* w, int* h);

// Plain text with its logical top left corner at (x, y). Draws nothing without font or text.
// `out_w` and `out_h` receive its logical size, 0 if nothing was drawn; either may be null.
void draw_ttf(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x, int y,
              SDL_Color color, int* out_w, int* out_h, std::uint8_t alpha);

// The same over a black shadow two logical pixels right and down of it, from one rendering.
void draw_with_shadow(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x,
                      int y, SDL_Color color, std::uint8_t alpha, std::uint8_t shadow_alpha);

// The same in a black outline with a shadow, for words over ground of any colour.
void draw_outlined(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x,
                   int y, SDL_Color color, std::uint8_t alpha);

// Big words that look cut out of metal: bevel, black outline, drop shadow. (x, y) is the corner of
// the letters; outline and shadow lie around it.
void draw_embossed(SDL_Renderer* renderer, TTF_Font* font, double scale, char const* text, int x,
                   int y, RGB fill, RGB light, RGB dark, std::uint8_t alpha);

// A time in hundredths, rounded: "75.30", and from a minute on "1:15.30" in the long form.
std::string format_time_short(unsigned ms);
std::string format_time_long(unsigned ms);
