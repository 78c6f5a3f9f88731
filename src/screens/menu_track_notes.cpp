#include "screens/menu_track_notes.h"

#include "base/own_place.h"
#include "base/texts.h"
#include "records/printed.h"
#include "render/colors.h"
#include "screens/menu_actions.h"
#include "screens/menu_drawing.h"
#include "screens/menu_screen.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t LONGEST_PATH = 90;  // bytes that fit on a line
constexpr unsigned FAILED_NOTE_MS = 8000; // the menu's intro is part of it

// The end of a long path tells more than its beginning; what begins with the home folder is told
// from there.
std::string short_path(std::string path) {
    char const* const home = std::getenv("HOME");
    std::string const start = home != nullptr ? home : "";
    if (!start.empty() && path.starts_with(start + "/")) {
        path = printed("~%s", path.c_str() + start.size());
    }
    if (path.size() <= LONGEST_PATH) return path;
    std::size_t const from = path.size() - LONGEST_PATH;
    std::size_t const slash = path.find('/', from);
    return printed("...%s", path.c_str() + (slash != std::string::npos ? slash : from));
}

std::string tracks_folder() {
    std::error_code ignored;
    return short_path(to_text(fs::absolute(to_path(OWN_PLACE + "tracks"), ignored)));
}

} // namespace

void make_no_tracks_label(MenuScreen& menu) {
    auto const pictures = discover_track_pngs();
    bool const none = std::all_of(pictures.begin(), pictures.end(),
                                  [](std::string const& picture) { return picture.empty(); });
    menu.no_tracks = {};
    if (!none) return;
    auto const label = [&menu](std::string const& text) {
        return make_label(menu.renderer, menu.menu_scale, menu.caption_font.get(), text.c_str(),
                          WHITE);
    };
    menu.no_tracks = {label(texts::NO_TRACKS), label(tracks_folder())};
}

void draw_no_tracks_label(MenuScreen const& menu, SDL_Rect const& view) {
    int y = place_y(view, THUMBS_Y) - menu.no_tracks[0].h * 5 / 4;
    SDL_Color colour = DIM;
    for (MenuLabel const& line : menu.no_tracks) {
        draw_label(menu.renderer, line, view.x + (view.w - line.w) / 2, y, colour);
        y += line.h * 3 / 2;
        colour = GOLD;
    }
}

void note_failed_track(MenuScreen& menu, std::string const& track, std::string const& picture,
                       unsigned now) {
    if (track.empty() && picture.empty()) return;
    std::string const text = track.empty() ? printed(texts::PICTURE_FAILED, picture.c_str())
                                           : printed(texts::NAMED_TRACK_FAILED, track.c_str());
    show_note(menu, text.c_str(), now);
    menu.note.until = now + FAILED_NOTE_MS;
}
