#include "render/second_face.h"

#include "base/utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr double SIZE_TO_HEIGHT = 0.75; // of the first face's line, so that letters are as high

struct OpenedFace {
    int size = 0; // 0 for an empty place
    TTF_Font* font = nullptr;
};

// Opened when a text first needs it, at each size that is asked for; null if there is none. They
// stay open, as nobody knows when the last text has been drawn; the oldest makes room.
TTF_Font* second_face(TTF_Font* first) {
    static std::array<OpenedFace, 16> opened{};
    static std::size_t oldest = 0;
    int const size =
        std::max(1, static_cast<int>(std::lround(TTF_FontHeight(first) * SIZE_TO_HEIGHT)));
    for (OpenedFace const& face : opened) {
        if (face.size == size) return face.font;
    }
    OpenedFace& place = opened.at(oldest);
    oldest = (oldest + 1) % opened.size();
    if (place.font != nullptr) TTF_CloseFont(place.font);
    place = {size, TTF_OpenFont(SECOND_FACE, size)};
    return place.font;
}

// Bytes that are no text are left to the first face.
bool first_has(TTF_Font* font, std::uint32_t code) {
    return code == 0 || TTF_GlyphIsProvided32(font, code) != 0;
}

// A piece of the text in one face.
struct Run {
    TTF_Font* font;
    std::string text;
};

// The text in runs. A single one in the first face, if that has it all or nobody has the rest.
std::vector<Run> runs_of(TTF_Font* font, std::string_view text) {
    std::vector<Run> runs;
    while (!text.empty()) {
        std::uint32_t code = 0;
        std::size_t const length = first_code_point(text, code);
        TTF_Font* face = font;
        if (!first_has(font, code)) {
            TTF_Font* const second = second_face(font);
            if (second != nullptr && TTF_GlyphIsProvided32(second, code) != 0) face = second;
        }
        if (runs.empty() || runs.back().font != face) runs.push_back({face, {}});
        runs.back().text += text.substr(0, length);
        text.remove_prefix(length);
    }
    return runs;
}

bool has_all(TTF_Font* font, std::string_view text) {
    while (!text.empty()) {
        std::uint32_t code = 0;
        text.remove_prefix(first_code_point(text, code));
        if (!first_has(font, code)) return false;
    }
    return true;
}

// Where the pieces of a line go: all stand on the baseline of the one that rises highest.
struct LineBox {
    int w = 0;
    int ascent = 0;
    int descent = 0;

    explicit LineBox(std::vector<Run> const& runs) {
        for (Run const& run : runs) {
            int run_w = 0;
            int run_h = 0;
            TTF_SizeUTF8(run.font, run.text.c_str(), &run_w, &run_h);
            int const up = TTF_FontAscent(run.font);
            w += run_w;
            ascent = std::max(ascent, up);
            descent = std::max(descent, run_h - up);
        }
    }
};

} // namespace

SurfaceHandle render_in_faces(TTF_Font* font, char const* text, SDL_Color color) {
    if (font == nullptr || text == nullptr || *text == '\0') return nullptr;
    if (has_all(font, text)) return SurfaceHandle(TTF_RenderUTF8_Blended(font, text, color));
    std::vector<Run> const runs = runs_of(font, text);
    if (runs.size() == 1) {
        return SurfaceHandle(TTF_RenderUTF8_Blended(runs[0].font, text, color));
    }
    LineBox const box(runs);
    SurfaceHandle line(SDL_CreateRGBSurfaceWithFormat(0, std::max(1, box.w),
                                                      std::max(1, box.ascent + box.descent), 32,
                                                      SDL_PIXELFORMAT_ARGB8888));
    if (!line) return line;
    int x = 0;
    for (Run const& run : runs) {
        SurfaceHandle const piece(TTF_RenderUTF8_Blended(run.font, run.text.c_str(), color));
        if (!piece) continue;
        SDL_Rect place{x, box.ascent - TTF_FontAscent(run.font), 0, 0};
        SDL_SetSurfaceBlendMode(piece.get(), SDL_BLENDMODE_NONE);
        SDL_BlitSurface(piece.get(), nullptr, line.get(), &place);
        x += piece->w;
    }
    return line;
}

bool size_in_faces(TTF_Font* font, char const* text, int* w, int* h) {
    if (font == nullptr || text == nullptr) return false;
    if (has_all(font, text)) return TTF_SizeUTF8(font, text, w, h) == 0;
    LineBox const box(runs_of(font, text));
    if (w != nullptr) *w = box.w;
    if (h != nullptr) *h = box.ascent + box.descent;
    return true;
}
