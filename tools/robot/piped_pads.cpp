// Loaded before SDL into the real program (LD_PRELOAD): virtual pads by lines that robot.py writes
// into the pipe BRINDLE_PADS. One line is obeyed each time that the program has read all its
// events, so that a press and its release never fall into one frame.

#include "virtual_pads.h"

#include <SDL.h>

#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

void obey_one_line() {
    static int const pipe = open(std::getenv("BRINDLE_PADS"), O_RDONLY | O_NONBLOCK);
    static std::string text;
    for (char byte = 0; text.find('\n') == std::string::npos && read(pipe, &byte, 1) == 1;) {
        text += byte;
    }
    std::size_t const end = text.find('\n');
    if (end == std::string::npos) return;
    obey_pad_line(text.substr(0, end));
    text.erase(0, end + 1);
}

} // namespace

extern "C" int SDL_PollEvent(SDL_Event* event) {
    using PollEvent = int (*)(SDL_Event*);
    static auto const real = reinterpret_cast<PollEvent>(dlsym(RTLD_NEXT, "SDL_PollEvent"));
    static bool drained = true;
    if (drained) obey_one_line();
    int const more = real(event);
    drained = more == 0;
    return more;
}
