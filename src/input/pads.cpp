#include "input/pads.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

// How far a stick or a trigger must be moved to count in the race, of 32767.
constexpr int DRIVES = 8000;
// In a menu a stick presses a direction when it is pushed this far, and again only after it has
// come back to within DRIVES.
constexpr int PRESSES = 20000;
constexpr std::uint32_t FIRST_REPEAT_MS = 400;
constexpr std::uint32_t REPEAT_MS = 130;
// A motor runs on for this long after it was last told anything, and is told again in half of it.
constexpr std::uint32_t MOTOR_MS = 160;
constexpr char const* MAPPINGS = "gamecontrollerdb.txt";
constexpr std::array<char const*, 2> SIDES{"red", "blue"};

struct ButtonName {
    SDL_GameControllerButton button;
    PadButton name;
};
constexpr std::array<ButtonName, 12> BUTTONS = {{
    {SDL_CONTROLLER_BUTTON_DPAD_UP, PadButton::Up},
    {SDL_CONTROLLER_BUTTON_DPAD_DOWN, PadButton::Down},
    {SDL_CONTROLLER_BUTTON_DPAD_LEFT, PadButton::Left},
    {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, PadButton::Right},
    {SDL_CONTROLLER_BUTTON_A, PadButton::A},
    {SDL_CONTROLLER_BUTTON_B, PadButton::B},
    {SDL_CONTROLLER_BUTTON_X, PadButton::X},
    {SDL_CONTROLLER_BUTTON_Y, PadButton::Y},
    {SDL_CONTROLLER_BUTTON_BACK, PadButton::Back},
    {SDL_CONTROLLER_BUTTON_START, PadButton::Start},
    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, PadButton::LB},
    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, PadButton::RB},
}};

std::optional<PadButton> named(int button) {
    auto const at = std::find_if(BUTTONS.begin(), BUTTONS.end(),
                                 [button](ButtonName const& b) { return b.button == button; });
    if (at == BUTTONS.end()) return std::nullopt;
    return at->name;
}

// Of a joystick that SDL has no names for only the first two buttons mean anything.
std::optional<PadButton> nameless(int button) {
    if (button == 0) return PadButton::A;
    if (button == 1) return PadButton::B;
    return std::nullopt;
}

Input controls_of(SDL_GameController* pad) {
    auto const axis = [pad](SDL_GameControllerAxis a) { return SDL_GameControllerGetAxis(pad, a); };
    auto const down = [pad](SDL_GameControllerButton b) {
        return SDL_GameControllerGetButton(pad, b) != 0;
    };
    int const stick = axis(SDL_CONTROLLER_AXIS_LEFTX);
    return {axis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT) > DRIVES || down(SDL_CONTROLLER_BUTTON_A),
            axis(SDL_CONTROLLER_AXIS_TRIGGERLEFT) > DRIVES || down(SDL_CONTROLLER_BUTTON_X),
            stick < -DRIVES || down(SDL_CONTROLLER_BUTTON_DPAD_LEFT),
            stick > DRIVES || down(SDL_CONTROLLER_BUTTON_DPAD_RIGHT)};
}

Input controls_of(SDL_Joystick* stick) {
    int const across = SDL_JoystickNumAxes(stick) > 0 ? SDL_JoystickGetAxis(stick, 0) : 0;
    return {SDL_JoystickGetButton(stick, 0) != 0, SDL_JoystickGetButton(stick, 1) != 0,
            across<-DRIVES, across> DRIVES};
}

void add(Input& input, Input const& more) {
    input.gas = input.gas || more.gas;
    input.brake = input.brake || more.brake;
    input.left = input.left || more.left;
    input.right = input.right || more.right;
}

// What a press means to a car. The second button of a joystick without names is its handbrake.
void tap(Input& tapped, PadButton button, bool has_names) {
    tapped.gas = tapped.gas || button == PadButton::A;
    tapped.brake = tapped.brake || button == (has_names ? PadButton::X : PadButton::B);
    tapped.left = tapped.left || button == PadButton::Left;
    tapped.right = tapped.right || button == PadButton::Right;
}

bool is_direction(PadButton button) {
    return button <= PadButton::Right;
}

bool same_kind(SDL_JoystickGUID const& a, SDL_JoystickGUID const& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::string text_or_empty(char const* text) {
    return text != nullptr ? text : "";
}

std::uint16_t motor_level(float strength) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(strength, 0.0F, 1.0F) * 65535.0F));
}

void add_mappings() {
    int added = SDL_GameControllerAddMappingsFromFile(MAPPINGS);
    if (added < 0) { // the program may have been started from another folder
        char* const base = SDL_GetBasePath();
        if (base != nullptr) {
            added = SDL_GameControllerAddMappingsFromFile((std::string(base) + MAPPINGS).c_str());
        }
        SDL_free(base);
    }
    if (added < 0) return;
    std::printf("pads: %d mappings from %s\n", added, MAPPINGS);
    std::fflush(stdout);
}

} // namespace

Pads::~Pads() {
    pads_.clear();
    if (started_) SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
}

void Pads::start() {
    if (SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) != 0) {
        std::fprintf(stderr, "pads: %s — keyboard still works\n", SDL_GetError());
        return;
    }
    started_ = true;
    add_mappings();
}

Pads::Pad* Pads::find(SDL_JoystickID id) {
    auto const at =
        std::find_if(pads_.begin(), pads_.end(), [id](Pad const& pad) { return pad.id == id; });
    return at != pads_.end() ? &*at : nullptr;
}

Pads::Pad const* Pads::pad_of(int player) const {
    SDL_JoystickID const id = seats_.at(static_cast<std::size_t>(player - 1)).pad;
    auto const at =
        std::find_if(pads_.begin(), pads_.end(), [id](Pad const& pad) { return pad.id == id; });
    return at != pads_.end() ? &*at : nullptr;
}

bool Pads::has_pad(int player) const {
    return pad_of(player) != nullptr;
}

std::string Pads::name_of(int player) const {
    Pad const* const pad = pad_of(player);
    return pad != nullptr ? text_or_empty(SDL_JoystickName(pad->joystick.get())) : "";
}

Pads::Seat* Pads::seat_of(SDL_JoystickID id) {
    auto const at = std::find_if(seats_.begin(), seats_.end(),
                                 [id](Seat const& seat) { return seat.pad == id; });
    return at != seats_.end() ? &*at : nullptr;
}

// The free seat that this very pad has left, as far as its serial number or its socket tell it from
// another of its kind; else one that nobody has left; else any.
Pads::Seat* Pads::seat_for(Pad const& pad) {
    SDL_JoystickGUID const kind = SDL_JoystickGetGUID(pad.joystick.get());
    std::string const serial = text_or_empty(SDL_JoystickGetSerial(pad.joystick.get()));
    std::string const port = text_or_empty(SDL_JoystickPath(pad.joystick.get()));
    auto const claim = [&](Seat const& seat) {
        if (seat.pad != -1) return -1;
        if (!seat.taken_before) return 1;
        if (!same_kind(seat.kind, kind)) return 0;
        if (!serial.empty() && serial == seat.serial) return 4;
        return port == seat.port ? 3 : 2;
    };
    Seat& best = claim(seats_[1]) > claim(seats_[0]) ? seats_[1] : seats_[0];
    return claim(best) >= 0 ? &best : nullptr;
}

void Pads::sit(Pad const& pad, Seat& seat) {
    SDL_Joystick* const joystick = pad.joystick.get();
    seat = {pad.id, true, SDL_JoystickGetGUID(joystick),
            text_or_empty(SDL_JoystickGetSerial(joystick)),
            text_or_empty(SDL_JoystickPath(joystick))};
    SDL_JoystickSetPlayerIndex(joystick, static_cast<int>(&seat - seats_.data()));
}

void Pads::tell(char const* line, Pad const& pad, std::string news) {
    std::string const name = text_or_empty(SDL_JoystickName(pad.joystick.get()));
    Seat const* const seat = seat_of(pad.id);
    char const* const side =
        seat != nullptr ? SIDES.at(static_cast<std::size_t>(seat - seats_.data())) : "nobody";
    std::printf("pad: \"%s\" %s %s\n", name.c_str(), line, side);
    std::fflush(stdout);
    news_ = std::move(news);
}

void Pads::plug(int device) {
    SDL_JoystickID const id = SDL_JoystickGetDeviceInstanceID(device);
    if (id < 0 || find(id) != nullptr) return;
    Pad pad;
    pad.id = id;
    if (SDL_IsGameController(device) == SDL_TRUE) {
        pad.controller.reset(SDL_GameControllerOpen(device));
    }
    pad.joystick.reset(SDL_JoystickOpen(device));
    if (!pad.joystick) {
        std::fprintf(stderr, "pads: cannot open joystick %d: %s — keyboard still works\n", device,
                     SDL_GetError());
        return;
    }
    Pad& plugged = pads_.emplace_back(std::move(pad));
    Seat* const seat = seat_for(plugged);
    if (seat != nullptr) sit(plugged, *seat);
    tell("drives", plugged,
         seat == nullptr         ? "Spare Pad"
         : seat == seats_.data() ? "Pad drives Red"
                                 : "Pad drives Blue");
}

void Pads::unplug(SDL_JoystickID id) {
    Pad* const pad = find(id);
    if (pad == nullptr) return;
    Seat* const seat = seat_of(id);
    tell("was unplugged from", *pad,
         seat == nullptr         ? ""
         : seat == seats_.data() ? "Red Pad unplugged"
                                 : "Blue Pad unplugged");
    if (seat != nullptr) seat->pad = -1; // it stays this pad's until another takes it
    if (held_ && held_->pad == id) held_.reset();
    pads_.erase(pads_.begin() + (pad - pads_.data()));
}

void Pads::swap_sides(SDL_JoystickID id, bool both_may) {
    Pad* const pad = find(id);
    if (pad == nullptr) return;
    Seat* const from = seat_of(id);
    Seat* const to = from == nullptr ? seat_for(*pad) : &seats_.at(from == seats_.data() ? 1 : 0);
    if (to == nullptr || (to->pad != -1 && !both_may)) return;
    Pad const* const other = find(to->pad);
    sit(*pad, *to);
    if (from != nullptr) *from = Seat{};
    if (other != nullptr) sit(*other, *from);
    tell("drives", *pad,
         other != nullptr      ? "Pads change Sides"
         : to == seats_.data() ? "Pad drives Red"
                               : "Pad drives Blue");
}

std::string Pads::take_news() {
    return std::exchange(news_, {});
}

// A spare pad that is used while a player has none is that player's.
void Pads::take_free_seat(Pad const& pad) {
    Seat* const seat = seat_of(pad.id) == nullptr ? seat_for(pad) : nullptr;
    if (seat == nullptr) return;
    sit(pad, *seat);
    tell("drives", pad, seat == seats_.data() ? "Pad drives Red" : "Pad drives Blue");
}

std::optional<PadPress> Pads::press(Pad& pad, PadButton button, std::uint32_t now) {
    in_use_ = true;
    take_free_seat(pad);
    tap(pad.tapped, button, pad.controller != nullptr);
    PadPress const press{button, pad.id};
    if (is_direction(button)) {
        held_ = press;
        repeat_at_ = now + FIRST_REPEAT_MS;
    }
    return press;
}

void Pads::release(SDL_JoystickID id, PadButton button) {
    if (held_ && held_->pad == id && held_->button == button) held_.reset();
}

// `told` is the direction that the stick was last told to be pushed in. What a stick does is read
// as it is for driving; only menus take it as a press.
std::optional<PadPress> Pads::lean(Pad& pad, int& told, int value, bool across, std::uint32_t now) {
    int const before = told;
    if (std::abs(value) <= DRIVES) told = 0;
    if (std::abs(value) > PRESSES) told = value < 0 ? -1 : 1;
    if (told == before) return std::nullopt;
    auto const direction = [across](int sign) {
        if (across) return sign < 0 ? PadButton::Left : PadButton::Right;
        return sign < 0 ? PadButton::Up : PadButton::Down;
    };
    if (before != 0) release(pad.id, direction(before));
    if (told == 0) return std::nullopt;
    return press(pad, direction(told), now);
}

std::optional<PadPress> Pads::controller_event(SDL_Event const& event, std::uint32_t now) {
    Pad* const pad = find(event.cdevice.which);
    if (pad == nullptr) return std::nullopt;
    if (event.type == SDL_CONTROLLERAXISMOTION) {
        if (event.caxis.axis == SDL_CONTROLLER_AXIS_LEFTX) {
            return lean(*pad, pad->lean.x, event.caxis.value, true, now);
        }
        if (event.caxis.axis == SDL_CONTROLLER_AXIS_LEFTY) {
            return lean(*pad, pad->lean.y, event.caxis.value, false, now);
        }
        return std::nullopt;
    }
    std::optional<PadButton> const button = named(event.cbutton.button);
    if (!button) return std::nullopt;
    if (event.type == SDL_CONTROLLERBUTTONDOWN) return press(*pad, *button, now);
    release(pad->id, *button);
    return std::nullopt;
}

// Of a joystick that SDL has no names for; of the others the same comes as a controller's event.
std::optional<PadPress> Pads::joystick_event(SDL_Event const& event, std::uint32_t now) {
    Pad* const pad = find(event.jdevice.which);
    if (pad == nullptr || pad->controller) return std::nullopt;
    if (event.type == SDL_JOYAXISMOTION) {
        if (event.jaxis.axis == 0) return lean(*pad, pad->lean.x, event.jaxis.value, true, now);
        if (event.jaxis.axis == 1) return lean(*pad, pad->lean.y, event.jaxis.value, false, now);
        return std::nullopt;
    }
    std::optional<PadButton> const button = nameless(event.jbutton.button);
    if (!button || event.type != SDL_JOYBUTTONDOWN) return std::nullopt;
    return press(*pad, *button, now);
}

std::optional<PadPress> Pads::handle(SDL_Event const& event, std::uint32_t now) {
    if (!started_) return std::nullopt;
    switch (event.type) {
    case SDL_JOYDEVICEADDED:
        plug(event.jdevice.which);
        return std::nullopt;
    case SDL_JOYDEVICEREMOVED:
        unplug(event.jdevice.which);
        return std::nullopt;
    case SDL_CONTROLLERBUTTONDOWN:
    case SDL_CONTROLLERBUTTONUP:
    case SDL_CONTROLLERAXISMOTION:
        return controller_event(event, now);
    case SDL_JOYBUTTONDOWN:
    case SDL_JOYAXISMOTION:
        return joystick_event(event, now);
    case SDL_KEYDOWN:
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
        in_use_ = false;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<PadPress> Pads::repeat(std::uint32_t now) {
    if (!held_ || static_cast<std::int32_t>(now - repeat_at_) < 0) return std::nullopt;
    repeat_at_ = now + REPEAT_MS;
    return held_;
}

void Pads::forget_taps() {
    for (Pad& pad : pads_) pad.tapped = {};
}

void Pads::apply(int player, Input& input, bool swap_when_reversing, bool reversing) const {
    Pad const* const pad = pad_of(player);
    if (pad == nullptr) return;
    Input held =
        pad->controller ? controls_of(pad->controller.get()) : controls_of(pad->joystick.get());
    add(held, pad->tapped);
    if (swap_when_reversing && reversing) std::swap(held.left, held.right);
    add(input, held);
}

void Pads::rumble(int player, float deep, float fine, std::uint32_t now) {
    if (!rumble_on) deep = fine = 0.0F;
    Pad* const pad = find(seats_.at(static_cast<std::size_t>(player - 1)).pad);
    if (pad == nullptr) return;
    Motor& motor = pad->motor;
    std::uint16_t const d = motor_level(deep);
    std::uint16_t const f = motor_level(fine);
    bool const same = d == motor.deep && f == motor.fine;
    if (same && ((d == 0 && f == 0) || now - motor.told_at < MOTOR_MS / 2)) return;
    motor = {d, f, now};
    SDL_JoystickRumble(pad->joystick.get(), d, f, d == 0 && f == 0 ? 0 : MOTOR_MS);
}

void Pads::silence() {
    for (int player : {1, 2}) rumble(player, 0.0F, 0.0F, SDL_GetTicks());
}
