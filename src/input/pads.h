#pragma once

// Pads that need no setup: every game controller that SDL knows, and of any other joystick the
// first axis and the first two buttons. This is the one place that knows pads; the race takes
// controls from it, the menus presses. The first pad drives red, the second blue; a pad that was
// unplugged finds its player again, further ones are spare and only work the menus.
//
// Every loop that reads events hands them all to `handle`, so that a pad may come and go anywhere.

#include "base/car_state.h"

#include <SDL.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct Controller_Deleter {
    void operator()(SDL_GameController* controller) const { SDL_GameControllerClose(controller); }
};
struct Joystick_Deleter {
    void operator()(SDL_Joystick* joystick) const { SDL_JoystickClose(joystick); }
};

// What can be pressed on a pad outside of driving; a stick that is pushed far presses a direction.
enum class PadButton : std::uint8_t { Up, Down, Left, Right, A, B, X, Y, Back, Start, LB, RB };

struct PadPress {
    PadButton button{};
    SDL_JoystickID pad = -1;
};

class Pads {
public:
    Pads() = default;
    ~Pads();
    Pads(Pads const&) = delete;
    Pads& operator=(Pads const&) = delete;

    // From here on pads are read. Adds the mappings of gamecontrollerdb.txt beside the program.
    void start();

    // One event of any kind. A press, if it is one of a pad.
    std::optional<PadPress> handle(SDL_Event const& event, std::uint32_t now);
    // The direction that is held, again and again at a calm pace; for menus, once a frame.
    std::optional<PadPress> repeat(std::uint32_t now);
    // Forgets what was tapped for the frame before; once a frame of the race, before its events.
    void forget_taps();

    // Turns on the controls that the player's pad holds, or that went down since the last frame;
    // never clears any. `player` is 1 or 2.
    void apply(int player, Input& input, bool swap_when_reversing, bool reversing) const;
    // Back: a lone pad goes to the other player; two change places if `both_may`.
    void swap_sides(SDL_JoystickID id, bool both_may);

    // Strengths 0 to 1 of the deep and of the fine motor of the player's pad. To be told every
    // frame: a pad that hears nothing more falls silent by itself.
    void rumble(int player, float deep, float fine, std::uint32_t now);
    void silence();

    // How many pads are plugged in, and whether a player has one.
    [[nodiscard]] std::size_t count() const { return pads_.size(); }
    [[nodiscard]] bool has_pad(int player) const;
    // What the player's pad is called; empty without one.
    [[nodiscard]] std::string name_of(int player) const;
    // Whether the last thing that was used was a pad, rather than keys or mouse.
    [[nodiscard]] bool in_use() const { return in_use_; }
    // What has happened to the pads, in a player's words, since the last call; mostly empty.
    std::string take_news();

    bool rumble_on = true;

private:
    struct Lean { // where a stick was last told to be pushed: -1, 0, 1 on each axis
        int x = 0;
        int y = 0;
    };
    struct Motor {
        std::uint16_t deep = 0;
        std::uint16_t fine = 0;
        std::uint32_t told_at = 0;
    };
    struct Pad {
        SDL_JoystickID id = -1;
        std::unique_ptr<SDL_GameController, Controller_Deleter> controller; // null if unknown
        std::unique_ptr<SDL_Joystick, Joystick_Deleter> joystick;
        Input tapped;
        Lean lean;
        Motor motor;
    };
    // One of the two players' places: the pad that sits there, or the one that sat there last.
    struct Seat {
        SDL_JoystickID pad = -1; // -1 for none
        bool taken_before = false;
        SDL_JoystickGUID kind{}; // of the pad that took it last
        std::string serial;
        std::string port;
    };

    void plug(int device);
    void unplug(SDL_JoystickID id);
    void sit(Pad const& pad, Seat& seat);
    void take_free_seat(Pad const& pad);
    [[nodiscard]] Seat* seat_for(Pad const& pad);
    [[nodiscard]] Seat* seat_of(SDL_JoystickID id);
    Pad* find(SDL_JoystickID id);
    [[nodiscard]] Pad const* pad_of(int player) const;
    void tell(char const* line, Pad const& pad, std::string news);
    std::optional<PadPress> press(Pad& pad, PadButton button, std::uint32_t now);
    std::optional<PadPress> lean(Pad& pad, int& told, int value, bool across, std::uint32_t now);
    std::optional<PadPress> controller_event(SDL_Event const& event, std::uint32_t now);
    std::optional<PadPress> joystick_event(SDL_Event const& event, std::uint32_t now);
    void release(SDL_JoystickID id, PadButton button);

    bool started_ = false;
    bool in_use_ = false;
    std::vector<Pad> pads_; // in the order they were plugged in
    std::array<Seat, 2> seats_;
    std::string news_;
    std::optional<PadPress> held_; // a direction
    std::uint32_t repeat_at_ = 0;
};
