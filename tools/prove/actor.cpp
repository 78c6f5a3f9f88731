#include "prove/actor.h"

#include "robot/virtual_pads.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

constexpr Uint32 WINDOW = 1; // the program's only one

std::array<Uint8, SDL_NUM_SCANCODES> held{};

std::string with_blanks(std::string text) {
    std::replace(text.begin(), text.end(), '_', ' ');
    return text;
}

SDL_Scancode key_named(std::string const& name) {
    SDL_Scancode const key = SDL_GetScancodeFromName(with_blanks(name).c_str());
    if (key == SDL_SCANCODE_UNKNOWN) std::fprintf(stderr, "stage: no key %s\n", name.c_str());
    return key;
}

void print_memory() {
    malloc_trim(0);
    std::ifstream statm("/proc/self/statm");
    long all = 0;
    long pages = 0;
    statm >> all >> pages;
    std::printf("memory: %ld KiB\n", pages * sysconf(_SC_PAGESIZE) / 1024);
    std::fflush(stdout);
}

int waiting = 0; // frames

void say_word(std::string const& word) {
    std::string const rest = word.substr(1);
    int x = 0;
    int y = 0;
    if (word == "memory") return print_memory();
    if (word == "@") return click_mouse();
    if (std::sscanf(word.c_str(), "*%d", &waiting) == 1) return;
    if (std::sscanf(word.c_str(), "@%d,%d", &x, &y) == 2) return move_mouse(x, y);
    if (std::sscanf(word.c_str(), "size:%d,%d", &x, &y) == 2) return resize_window(x, y);
    if (word.starts_with("pad:")) return obey_pad_line(with_blanks(word.substr(4)));
    if (word[0] == '=' && !rest.empty()) return type_words(with_blanks(rest).c_str());
    if (word[0] == '+' && !rest.empty()) return set_key(key_named(rest), true);
    if (word[0] == '-' && !rest.empty()) return set_key(key_named(rest), false);
    tap_key(key_named(word));
}

} // namespace

Uint8 const* keys_held() {
    return held.data();
}

void set_key(SDL_Scancode key, bool down) {
    bool const was_down = held.at(key) != 0;
    SDL_Event event{};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.windowID = WINDOW;
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.repeat = down && was_down ? 1 : 0;
    event.key.keysym.scancode = key;
    event.key.keysym.sym = SDL_GetKeyFromScancode(key);
    if (held[SDL_SCANCODE_LSHIFT] != 0) event.key.keysym.mod |= KMOD_LSHIFT;
    if (held[SDL_SCANCODE_LCTRL] != 0) event.key.keysym.mod |= KMOD_LCTRL;
    held.at(key) = down ? 1 : 0;
    SDL_PushEvent(&event);
}

void tap_key(SDL_Scancode key) {
    set_key(key, true);
    set_key(key, false);
}

void type_words(char const* text) {
    if (SDL_EventState(SDL_TEXTINPUT, SDL_QUERY) != SDL_ENABLE) return;
    SDL_Event event{};
    event.type = SDL_TEXTINPUT;
    event.text.windowID = WINDOW;
    std::snprintf(event.text.text, sizeof event.text.text, "%s", text);
    SDL_PushEvent(&event);
}

void move_mouse(int dx, int dy) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.windowID = WINDOW;
    event.motion.xrel = dx;
    event.motion.yrel = dy;
    SDL_PushEvent(&event);
}

void click_mouse() {
    for (Uint32 const type : {SDL_MOUSEBUTTONDOWN, SDL_MOUSEBUTTONUP}) {
        SDL_Event event{};
        event.type = type;
        event.button.windowID = WINDOW;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
        event.button.clicks = 1;
        SDL_PushEvent(&event);
    }
}

void resize_window(int w, int h) {
    if (SDL_Window* window = SDL_GetWindowFromID(WINDOW)) SDL_SetWindowSize(window, w, h);
}

void close_window() {
    SDL_Event event{};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
}

void actor_frame() {
    static char const* const script = std::getenv("BRINDLE_SCRIPT");
    static std::istringstream words(script != nullptr ? script : "");
    if (script == nullptr || --waiting > 0) return;
    std::string word;
    if (words >> word) {
        say_word(word);
    } else {
        close_window();
    }
}
