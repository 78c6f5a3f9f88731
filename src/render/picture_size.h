#pragma once

// The size that a picture file claims in its head, without decoding it. A few bytes can claim
// gigabytes, which the decoders would take and fill before they find out.

#include <SDL.h>

#include <iosfwd>

// {0, 0} if the file cannot be read or is no PNG, JPEG or BMP.
SDL_Point picture_size(char const* path);
// The same of a file's bytes.
SDL_Point picture_size(std::istream& file);
