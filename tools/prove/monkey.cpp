// Twenty frames a second, and often several presses in one: ten times a person's speed.

#include "prove/monkey.h"

#include "prove/actor.h"
#include "robot/virtual_pads.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

// What it is up to for a while: some screens are only reached by who lets races go on.
enum class Mood { wild, driving, watching, typing, padding, resizing, launching };
constexpr std::array MOODS{Mood::wild,    Mood::driving,  Mood::watching, Mood::typing,
                           Mood::padding, Mood::resizing, Mood::launching};

constexpr std::array DRIVING_KEYS{SDL_SCANCODE_Z,        SDL_SCANCODE_X,    SDL_SCANCODE_F,
                                  SDL_SCANCODE_F,        SDL_SCANCODE_C,    SDL_SCANCODE_KP_1,
                                  SDL_SCANCODE_KP_ENTER, SDL_SCANCODE_KP_2, SDL_SCANCODE_KP_PERIOD};
constexpr std::array KEYS{
    SDL_SCANCODE_ESCAPE, SDL_SCANCODE_RETURN, SDL_SCANCODE_SPACE,  SDL_SCANCODE_BACKSPACE,
    SDL_SCANCODE_1,      SDL_SCANCODE_2,      SDL_SCANCODE_3,      SDL_SCANCODE_9,
    SDL_SCANCODE_P,      SDL_SCANCODE_R,      SDL_SCANCODE_G,      SDL_SCANCODE_T,
    SDL_SCANCODE_L,      SDL_SCANCODE_M,      SDL_SCANCODE_N,      SDL_SCANCODE_K,
    SDL_SCANCODE_B,      SDL_SCANCODE_V,      SDL_SCANCODE_F1,     SDL_SCANCODE_F2,
    SDL_SCANCODE_F3,     SDL_SCANCODE_F4,     SDL_SCANCODE_F5,     SDL_SCANCODE_F6,
    SDL_SCANCODE_F7,     SDL_SCANCODE_F8,     SDL_SCANCODE_F9,     SDL_SCANCODE_F10,
    SDL_SCANCODE_F11,    SDL_SCANCODE_F12,    SDL_SCANCODE_PAGEUP, SDL_SCANCODE_PAGEDOWN,
    SDL_SCANCODE_LSHIFT, SDL_SCANCODE_SLASH,  SDL_SCANCODE_LEFT,   SDL_SCANCODE_RIGHT,
    SDL_SCANCODE_UP,     SDL_SCANCODE_DOWN,   SDL_SCANCODE_TAB,    SDL_SCANCODE_HOME,
    SDL_SCANCODE_END,    SDL_SCANCODE_DELETE, SDL_SCANCODE_LALT,   SDL_SCANCODE_LCTRL};
constexpr std::array TEXTS{"a",
                           "Ann",
                           " ",
                           "\xc3\x85sa",
                           "\xe6\x97\xa5\xe6\x9c\xac",
                           "?",
                           "]",
                           "\xff\xfe",
                           "\xf0\x9f\x8f\x81",
                           "e\xcc\x81",
                           "wwwwwwwwwwwwwwwwwwwwwwww",
                           "/../"};
constexpr std::array PADS{"one", "two", "three"};
constexpr std::array BUTTONS{"a",     "b",    "x",      "y",      "back",
                             "start", "dpup", "dpdown", "dpleft", "dpright"};
constexpr std::array AXES{"leftx", "lefty", "lefttrigger", "righttrigger"};

struct Monkey {
    std::mt19937 random;
    int frames = 0;
    Mood mood = Mood::wild;
    int mood_frames = 0;
    std::array<bool, PADS.size()> plugged{};

    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }
    template <class List>
    auto pick(List const& list) {
        return list.at(static_cast<std::size_t>(below(static_cast<int>(list.size()))));
    }
};

Monkey wake_up() {
    unsigned seed = 0;
    Monkey monkey;
    std::sscanf(std::getenv("BRINDLE_MONKEY"), "%u %d", &seed, &monkey.frames);
    monkey.random.seed(seed);
    return monkey;
}

void use_any_key(Monkey& monkey) {
    SDL_Scancode const key = monkey.below(10) == 0
                                 ? static_cast<SDL_Scancode>(monkey.below(SDL_NUM_SCANCODES))
                                 : monkey.pick(KEYS);
    if (monkey.below(4) == 0) return set_key(key, keys_held()[key] == 0);
    tap_key(key);
}

void drive(Monkey& monkey) {
    SDL_Scancode const key = monkey.pick(DRIVING_KEYS);
    set_key(key, keys_held()[key] == 0);
}

void use_mouse(Monkey& monkey) {
    if (monkey.below(3) == 0) return click_mouse();
    move_mouse(monkey.below(401) - 200, monkey.below(301) - 150);
}

void use_pad(Monkey& monkey) {
    auto const which = static_cast<std::size_t>(monkey.below(static_cast<int>(PADS.size())));
    std::string const name = PADS.at(which);
    if (!monkey.plugged.at(which) || monkey.below(60) == 0) {
        bool const in = monkey.plugged.at(which) = !monkey.plugged.at(which);
        obey_pad_line((in ? "plug " : "unplug ") + name +
                      (monkey.below(3) == 0 ? " stick" : " pad"));
    } else if (monkey.below(3) == 0) {
        obey_pad_line("axis " + name + " " + monkey.pick(AXES) + " " +
                      std::to_string(monkey.below(65536) - 32768));
    } else {
        obey_pad_line("button " + name + " " + monkey.pick(BUTTONS) + " " +
                      std::to_string(monkey.below(2)));
    }
}

void tell_window(Uint8 what) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.windowID = 1;
    event.window.event = what;
    SDL_PushEvent(&event);
}

void use_window(Monkey& monkey) {
    constexpr std::array<Uint8, 6> HAPPENINGS{
        SDL_WINDOWEVENT_FOCUS_LOST, SDL_WINDOWEVENT_FOCUS_GAINED, SDL_WINDOWEVENT_MINIMIZED,
        SDL_WINDOWEVENT_RESTORED,   SDL_WINDOWEVENT_EXPOSED,      SDL_WINDOWEVENT_LEAVE};
    if (monkey.below(3) == 0) return tell_window(monkey.pick(HAPPENINGS));
    if (monkey.below(8) == 0) return tap_key(SDL_SCANCODE_F11);
    bool const tiny = monkey.below(4) == 0;
    resize_window(1 + monkey.below(tiny ? 40 : 1600), 1 + monkey.below(tiny ? 40 : 1000));
}

// From wherever the menu is into a race between computers, of few laps.
void launch(Monkey& monkey) {
    constexpr std::array STEPS{SDL_SCANCODE_1, SDL_SCANCODE_R, SDL_SCANCODE_F3, SDL_SCANCODE_F4,
                               SDL_SCANCODE_SPACE};
    if (monkey.below(8) == 0) tap_key(monkey.pick(STEPS));
}

void act_in_mood(Monkey& monkey) {
    switch (monkey.mood) {
    case Mood::watching:
        return;
    case Mood::driving:
        return drive(monkey);
    case Mood::launching:
        return launch(monkey);
    case Mood::typing:
        if (monkey.below(2) == 0) return type_words(monkey.pick(TEXTS));
        return use_any_key(monkey);
    case Mood::padding:
        return use_pad(monkey);
    case Mood::resizing:
        if (monkey.below(4) == 0) use_window(monkey);
        return;
    case Mood::wild:
        if (monkey.below(3) == 0) return use_mouse(monkey);
        return use_any_key(monkey);
    }
}

} // namespace

void monkey_frame() {
    static Monkey monkey = wake_up();
    if (--monkey.frames <= 0) return close_window();
    if (--monkey.mood_frames <= 0) {
        monkey.mood = monkey.pick(MOODS);
        monkey.mood_frames = 5 + monkey.below(monkey.mood == Mood::watching ? 400 : 80);
    }
    for (int i = monkey.below(4); i > 0; --i) act_in_mood(monkey);
}
