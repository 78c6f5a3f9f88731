#include "screens/menu_label.h"

#include "render/rendered_text.h"

#include <algorithm>
#include <cmath>

double menu_scale(SDL_Renderer* renderer) {
    int logical_h = 0;
    int output_h = 0;
    SDL_RenderGetLogicalSize(renderer, nullptr, &logical_h);
    SDL_GetRendererOutputSize(renderer, nullptr, &output_h);
    return logical_h > 0 ? static_cast<double>(output_h) / logical_h : 1.0;
}

int menu_font_size(double design, double scale) {
    return std::max(1, static_cast<int>(std::lround(design * scale)));
}

MenuLabel make_label(SDL_Renderer* renderer, double scale, TTF_Font* font, char const* text,
                     SDL_Color colour) {
    MenuLabel label;
    RenderedText line = render_text(renderer, font, text, colour);
    if (!line.tex) return label;
    label.tex = std::move(line.tex);
    label.w = static_cast<int>(std::lround(line.w / scale));
    label.h = static_cast<int>(std::lround(line.h / scale));
    return label;
}

void draw_label(SDL_Renderer* renderer, MenuLabel const& label, int x, int y, SDL_Color tint) {
    if (!label.tex) return;
    SDL_SetTextureColorMod(label.tex.get(), tint.r, tint.g, tint.b);
    SDL_Rect const target{x, y, label.w, label.h};
    SDL_RenderCopy(renderer, label.tex.get(), nullptr, &target);
}
