#include "virtual_pads.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>

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

} // namespace

void obey_pad_line(std::string const& line) {
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
