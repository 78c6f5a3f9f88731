// Any bytes as a song: samples or none.

#include "audio/mp3.h"
#include "input_file.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static std::string const path = scratch_folder() / "any.mp3";
    write_bytes(path, data, size);
    decode_mp3_mono(path.c_str(), 22050);
    return 0;
}
