// Any bytes as the head of a picture or a thumbnail: a size that is not negative.

#include "input_file.h"
#include "render/picture_size.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    InputStream stream(data, size);
    SDL_Point const picture = picture_size(stream);
    require(picture.x >= 0 && picture.y >= 0);
    return 0;
}
