#include "shell/options.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr long MOST_LAPS = 99;

struct Flag {
    std::string_view name;
    bool Options::*field;
};

constexpr std::array FLAGS = {
    Flag{"-fast", &Options::fast},
    Flag{"-arcade", &Options::arcade},
    Flag{"-ai", &Options::ai},
    Flag{"-ai2", &Options::ai2},
    Flag{"-menu", &Options::menu},
    Flag{"-finish", &Options::finish},
    Flag{"-winner", &Options::winner},
    Flag{"-gamepad-test", &Options::gamepad_test},
    Flag{"-help-screen", &Options::help_screen},
    Flag{"-test-ghost", &Options::test_ghost},
    Flag{"-win", &Options::win},
};

constexpr std::string_view HIGHSCORES = "-highscores=";
constexpr std::string_view RACE = "-race=";

// What the listing says below its heading. It tells the keys as a player knows them.
constexpr char const* KEY_LISTING =
    "Red player:\n"
    "  Z          turn left\n"
    "  X          turn right\n"
    "  F          accelerate (release to brake)\n"
    "  C          handbrake / brake\n"
    "\n"
    "Blue player:\n"
    "  KP1 / 1    turn left (numpad or alt cluster)\n"
    "  KP2 / 2    turn right (numpad or alt cluster)\n"
    "  KP-Enter / Enter / '     accelerate (also brake on release; alts: main Enter or ')\n"
    "  KP. / . / /     handbrake (numpad . ; alt . or / ; also right SHIFT)\n"
    "  ,          turn left (alt positional cluster)\n"
    "  .          turn right (alt)\n"
    "  /          handbrake (alt main-block) [or SHIFT]\n"
    "  '          accelerate/brake (alt) [or ENTER]\n"
    "  (also RSHIFT for brake in alt cluster)\n"
    "\n"
    "Major keys:\n"
    "  1 .. 9     load track slot (re-press current = restart keeping ghosts;\n"
    "             different slot = wipe ghosts + restart)\n"
    "  Backspace  restart current race (keeps ghosts/best laps)\n"
    "  L          toggle \"launch\" (flying-start) mode\n"
    "  PgUp / PgDn  zoom in / out\n"
    "  Esc        quit program / return to menu / skip to game-over from finish seq\n"
    "  SPACE      start (intro/menu) / start race from menu, or return from game-over\n"
    "  G          toggle ghost-car playback (recording always on)\n"
    "             (SHIFT+G = load best-ever ghost from disk for this track+name)\n"
    "  F1 / F2    solo full-screen view for P1 / P2 (toggle; cancels split)\n"
    "  T          toggle rasterised .trk view vs sibling .png (if present)\n"
    "  P          toggle smooth panning camera vs instant snap\n"
    "  F11        toggle fullscreen (also affects volume in race — see minor)\n"
    "\n"
    "Minor keys:\n"
    "  F3 / F4    toggle \"swap left/right while reversing\" for P1 / P2\n"
    "  F5 / F6    toggle invert accelerate/brake for P1 / P2\n"
    "  F7         toggle alternative ghost-car sprite (fancy outline)\n"
    "  M          toggle race music on/off (persists across tracks)\n"
    "  N          skip to next race music track (cancels any pending GO play)\n"
    "  K          toggle engine/skid/rumble sound effects\n"
    "  F10        reset music volume to default\n"
    "  F11 / F12  lower / raise music volume (in-race)\n"
    "\n"
    "Menu keys:\n"
    "  1 .. 9     select track slot (or accept by number if no thumbnail)\n"
    "  P          choose practice mode\n"
    "  R          choose race mode (while selected, press again to cycle laps 3/5/10)\n"
    "  F1 / F2    focus name entry for red / blue player\n"
    "  SPACE / Return / KP-Enter   start the race (requires a track selected)\n"
    "  F11        toggle fullscreen\n"
    "  / or ?     open the key-bindings help screen\n"
    "  ESC        quit the program from the menu\n"
    "\n"
    "Internal keys (mostly debug / special contexts):\n"
    "  F8         toggle on-screen FPS counter\n"
    "  F9         toggle VSYNC (with note)\n"
    "  (in -test-ghost)  A, UP/DOWN, LEFT/RIGHT  (alpha / outline tuning)\n"
    "  (menu/intro)  ? or / or ?  = open key help screen\n"
    "  (name entry etc.)  letters, backspace, TAB, alts, RETURN etc. for UI\n"
    "  (during game-over) only SPACE and ESC have effect (to menu)\n"
    "\n"
    "Notes:\n"
    "  - Many keys are disabled during countdown, game-over sequence, etc.\n"
    "  - Gamepad (if input.conf present) mirrors many of the above.\n"
    "  - See also command-line options via -help (includes -fast, -race=N, -menu etc).\n"
    "  - The big key list comment was removed from main after adding this.\n";

bool set_flag(Options& options, std::string_view argument) {
    for (Flag const& flag : FLAGS) {
        if (argument == flag.name) {
            options.*flag.field = true;
            return true;
        }
    }
    return false;
}

// Prints what the argument asks for and ends the process; returns if it asks for nothing.
void answer_question(std::string_view argument, char const* program) {
    if (argument == "-h" || argument == "-help" || argument == "--help") {
        print_usage(program);
    } else if (argument == "-keys") {
        print_all_keybindings(program);
    } else {
        return;
    }
    std::exit(EXIT_SUCCESS);
}

void set_race_laps(Options& options, char const* argument) {
    char const* const number = argument + RACE.size();
    char* end = nullptr;
    long const laps = std::strtol(number, &end, 10);
    if (*number != '\0' && *end == '\0' && laps >= 1 && laps <= MOST_LAPS) {
        options.race_laps = static_cast<std::int32_t>(laps);
    } else {
        std::fprintf(stderr, "ignoring -race= (need 1..99 laps): %s\n", argument);
    }
}

// Reads the argument at `index`, and the next one with it if it is this one's value. Returns how
// many arguments it took.
int read_argument(Options& options, int argc, char** argv, int index) {
    char const* const text = argv[index];
    std::string_view const argument = text;
    if (set_flag(options, argument)) return 1;
    answer_question(argument, argv[0]);
    if (argument.starts_with(HIGHSCORES)) {
        options.highscores_name = argument.substr(HIGHSCORES.size());
    } else if (argument == "-o" && index + 1 < argc) {
        options.highscores_out = argv[index + 1];
        return 2;
    } else if (argument.starts_with(RACE)) {
        set_race_laps(options, text);
    } else if (argument.size() == 1 && argument[0] >= '1' && argument[0] <= '9') {
        options.track = argument[0] - '0';
    } else {
        std::fprintf(stderr, "ignoring unrecognised argument: %s\n", text);
    }
    return 1;
}

} // namespace

Options parse_cmdline(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc;) i += read_argument(options, argc, argv, i);
    return options;
}

void print_usage(char const* program) {
    std::printf("Brindle Run - two-player split-screen rally racer\n"
                "\n"
                "Usage: %s [options] [track-number]\n"
                "\n"
                "  1-9            start on that track (default: first available)\n"
                "  -menu          go straight to the menu screen\n"
                "  -fast          skip the intro/menu into a quick practice run\n"
                "  -arcade        skip the intro/menu into arcade mode (cars can bump;\n"
                "                 no lap records, ghosts, or saved data)\n"
                "  -ai            like -arcade, but the red car is AI-driven (placeholder);\n"
                "                 you drive blue. No records/ghosts saved.\n"
                "  -ai2           like -ai, but BOTH cars are AI-driven (just watch)\n"
                "  -race=N        with -fast: race N laps (1-99) instead of practice\n"
                "  -win           start windowed instead of fullscreen\n"
                "  -gamepad-test  print live joystick axis/button numbers, then exit\n"
                "  -highscores=NAME   write NAME's best-lap times to a PDF, then exit\n"
                "  -o FILE        output path for -highscores (default <NAME>_highscores.pdf)\n"
                "  -keys          print ALL keybindings with documentation and exit\n"
                "  -h, -help, --help   show this help and exit\n"
                "\n"
                "In the menu, press '?' (or click the ? button) for the key bindings.\n",
                program);
}

void print_all_keybindings(char const* program) {
    std::printf("Brindle Run — all key bindings\n"
                "\n"
                "Usage: %s [options] [track-number]\n"
                "       %s -keys   (this listing)\n"
                "\n",
                program, program);
    std::fputs(KEY_LISTING, stdout);
}
