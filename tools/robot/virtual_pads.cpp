// Loaded before SDL into the real program (LD_PRELOAD): pads that exist only in SDL, plugged in,
// moved and pulled out by lines that robot.py writes into the pipe BRINDLE_PADS. One line is obeyed
// each time that the program has read all its events, so that a press and its release never fall
// into one frame. What the pads' motors are told goes to standard output.
//
//   plug NAME pad|stick     a controller that SDL knows, or a joystick that it does not
//   unplug NAME
//   button NAME BUTTON 0|1  BUTTON by SDL's name ("a", "dpleft", "start") or by its number
//   axis NAME AXIS VALUE    AXIS by SDL's name ("leftx", "righttrigger") or by its number

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

struct VirtualPad {
    std::string name;
    SDL_JoystickID id = -1;
    SDL_Joystick* handle = nullptr;
};

std::map<std::string, VirtualPad> pads; // desc.userdata points into it

int tell_rumble(void* userdata, Uint16 deep, Uint16 fine) {
    std::printf("rumble %s %u %u\n", static_cast<VirtualPad*>(userdata)->name.c_str(), deep, fine);
    std::fflush(stdout);
    return 0;
}

void plug(std::string const& name, bool known) {
    VirtualPad& pad = pads[name];
    pad.name = name;
    SDL_VirtualJoystickDesc desc{};
    desc.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    desc.type = known ? SDL_JOYSTICK_TYPE_GAMECONTROLLER : SDL_JOYSTICK_TYPE_UNKNOWN;
    desc.naxes = known ? SDL_CONTROLLER_AXIS_MAX : 2;
    desc.nbuttons = known ? SDL_CONTROLLER_BUTTON_MAX : 2;
    desc.name = pad.name.c_str();
    desc.userdata = &pad;
    desc.Rumble = tell_rumble;
    int const device = SDL_JoystickAttachVirtualEx(&desc);
    pad.id = SDL_JoystickGetDeviceInstanceID(device);
    pad.handle = SDL_JoystickOpen(device);
    for (int axis : {SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT}) {
        if (known) SDL_JoystickSetVirtualAxis(pad.handle, axis, SDL_JOYSTICK_AXIS_MIN);
    }
}

void unplug(std::string const& name) {
    VirtualPad& pad = pads[name];
    SDL_JoystickClose(pad.handle);
    for (int device = 0; device < SDL_NumJoysticks(); ++device) {
        if (SDL_JoystickGetDeviceInstanceID(device) == pad.id) SDL_JoystickDetachVirtual(device);
    }
}

int number(std::string const& text, int by_name) {
    return by_name >= 0 ? by_name : std::atoi(text.c_str());
}

void obey(std::string const& line) {
    std::istringstream words(line);
    std::string verb;
    std::string name;
    std::string what;
    int value = 0;
    words >> verb >> name >> what >> value;
    if (verb == "plug") plug(name, what == "pad");
    if (verb == "unplug") unplug(name);
    if (verb == "button") {
        int const button = number(what, SDL_GameControllerGetButtonFromString(what.c_str()));
        SDL_JoystickSetVirtualButton(pads[name].handle, button, static_cast<Uint8>(value));
    }
    if (verb == "axis") {
        int const axis = number(what, SDL_GameControllerGetAxisFromString(what.c_str()));
        SDL_JoystickSetVirtualAxis(pads[name].handle, axis, static_cast<Sint16>(value));
    }
}

void obey_one_line() {
    static int const pipe = open(std::getenv("BRINDLE_PADS"), O_RDONLY | O_NONBLOCK);
    static std::string text;
    for (char byte = 0; text.find('\n') == std::string::npos && read(pipe, &byte, 1) == 1;) {
        text += byte;
    }
    std::size_t const end = text.find('\n');
    if (end == std::string::npos) return;
    obey(text.substr(0, end));
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
