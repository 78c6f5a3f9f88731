#pragma once

// Text in two faces. Names may hold letters that the face they are shown in lacks, Greek or
// Cyrillic: those are taken from a second face of the same size, on the same line. A text that the
// first face has all letters of is what SDL_ttf makes of it, to the pixel.

#include "base/sdl_handles.h"

constexpr char const* SECOND_FACE = "art/fonts/DejaVuSans-Bold.ttf";

// The text as a surface with alpha; null for a failure, silently.
SurfaceHandle render_in_faces(TTF_Font* font, char const* text, SDL_Color color);
// Its size in pixels; false on failure. Either may be null.
bool size_in_faces(TTF_Font* font, char const* text, int* w, int* h);
