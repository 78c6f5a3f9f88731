// What the menu makes and loads before its first frame. Each step leaves out what it cannot have.

#include "audio/audio.h"
#include "audio/sound_slots.h"
#include "platform/mouse.h"
#include "records/player_names.h"
#include "records/replace_file.h"
#include "render/colors.h"
#include "render/image.h"
#include "screens/edge_points.h"
#include "screens/menu_actions.h"
#include "screens/menu_art.h"
#include "screens/menu_loop.h"
#include "screens/menu_music.h"
#include "screens/menu_screen.h"
#include "screens/menu_track_notes.h"
#include "screens/screen_font.h"
#include "world/track_file.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr SDL_Color HEADING{210, 225, 255, 255};
constexpr double START_SPARE = 1.2; // the button's art is larger than at rest, to grow sharply
constexpr double MOUSE_GAIN = 4.0;
constexpr unsigned SETTLED_MS = 200; // a size that has not changed for so long

constexpr char const* CREDITS =
    "Programming - Zorvan          Music - Quillby          "
    "Art - Maplewick/Tandra          Prompting and Level Design - Gadget and Pixie Ostrel";

// A font of the menu: its size in logical pixels and where it may lie.
struct MenuFont {
    double size;
    char const* first;
    char const* second;
};

constexpr MenuFont HEADING_FONT{
    21.25, "art/fonts/StarJediOutline-y0xm.ttf",
    "art/fonts/.extracted/star-jedi-outline-font/StarJediOutline-y0xm.ttf"};
constexpr MenuFont MODE_FONT{18.0, "art/fonts/Quango-xlVR.otf",
                             "art/fonts/.extracted/quango-font/Quango-xlVR.otf"};
constexpr MenuFont CREDITS_FONT{
    11.0, "art/fonts//Montserrat-SemiBoldItalic.otf",
    "/usr/share/fonts/harbourtype-montserrat-fonts/Montserrat-SemiBold.otf"};
constexpr MenuFont SMALL_FONT{12.0, MODE_FONT.first, MODE_FONT.second};
constexpr MenuFont CAPTION_FONT{15.0, MODE_FONT.first, MODE_FONT.second};
constexpr MenuFont NOTE_FONT{16.0, MODE_FONT.first, MODE_FONT.second};

FontHandle open_font(MenuFont const& font, double scale) {
    return open_screen_font({font.first, font.second}, menu_font_size(font.size, scale));
}

void report(char const* what) {
    std::fprintf(stderr, "%s: %s\n", what, SDL_GetError());
}

MenuLabel label(MenuScreen const& menu, FontHandle const& font, char const* text,
                SDL_Color colour = WHITE) {
    return make_label(menu.renderer, menu.menu_scale, font.get(), text, colour);
}

bool take_kept_header(MenuScreen& menu) {
    if (menu.title == nullptr || !menu.title->picture) return false;
    menu.header = std::move(menu.title->picture);
    menu.header_w = menu.title->w;
    menu.header_h = menu.title->h;
    menu.sparkle.points = std::move(menu.title->rim);
    return true;
}

void load_header(MenuScreen& menu) {
    SurfaceHandle const picture = load_picture("art/menu_header_alpha.png");
    if (!picture) {
        report("menu header image");
        return;
    }
    menu.header_w = picture->w;
    menu.header_h = picture->h;
    menu.sparkle.points = build_edge_points(picture.get());
    menu.header.reset(SDL_CreateTextureFromSurface(menu.renderer, picture.get()));
    if (!menu.header) report("menu header image");
}

void prepare_sparkles(MenuScreen& menu) {
    menu.sparkle.star = make_sparkle_star(menu.renderer);
    std::srand(SDL_GetTicks());
}

void measure_screen(MenuScreen& menu) {
    SDL_RenderGetLogicalSize(menu.renderer, &menu.W, &menu.H);
    SDL_GetRendererOutputSize(menu.renderer, &menu.output_w, &menu.output_h);
    menu.menu_scale = menu_scale(menu.renderer);
}

void make_headings(MenuScreen& menu) {
    FontHandle const font = open_font(HEADING_FONT, menu.menu_scale);
    if (!font) report("menu heading font");
    menu.heading_mode = label(menu, font, "game mode", HEADING);
    menu.heading_names = label(menu, font, "player names", HEADING);
    menu.heading_tracks = label(menu, font, "track selection", HEADING);
}

void make_mode_labels(MenuScreen& menu) {
    menu.mode_font = open_font(MODE_FONT, menu.menu_scale);
    if (menu.mode_font) {
        TTF_SetFontKerning(menu.mode_font.get(), 0);
    } else {
        report("menu game-mode font");
    }
    menu.mode.practice = label(menu, menu.mode_font, "Practice");
    menu.mode.race = label(menu, menu.mode_font, "Race");
    menu.mode.arrow = label(menu, menu.mode_font, "»");
    menu.mode.laps_caption = label(menu, menu.mode_font, "—   laps:");
    for (std::size_t i = 0; i < LAP_COUNTS.size(); ++i) {
        menu.mode.lap_options[i] =
            label(menu, menu.mode_font, std::to_string(LAP_COUNTS[i]).c_str());
    }
    menu.names.red_label = label(menu, menu.mode_font, "red:");
    menu.names.blue_label = label(menu, menu.mode_font, "blue:");
    menu.help_label = label(menu, menu.mode_font, "?");
    menu.help_ring =
        make_help_ring(menu.renderer, help_button_size(menu.help_label), menu.menu_scale);
}

void make_credits(MenuScreen& menu) {
    FontHandle const font = open_font(CREDITS_FONT, menu.menu_scale);
    if (!font) report("menu credits font");
    menu.credits = label(menu, font, CREDITS);
}

// What is made for the output's size and is made in no time.
void make_labels(MenuScreen& menu) {
    make_headings(menu);
    make_mode_labels(menu);
    make_credits(menu);
}

void fill_names(MenuScreen& menu) {
    auto names = load_player_names();
    for (std::size_t i = 0; i < names.size(); ++i) {
        NameField& field = menu.names.fields[i];
        field.text = std::move(names[i]);
        field.cursor = static_cast<int>(field.text.size());
        refresh_field(field, menu.mode_font.get(), menu.renderer);
    }
}

// Trimmed art as a texture with linear scaling; its pixel size goes to `w` and `h`.
TextureHandle load_art(MenuScreen const& menu, char const* path,
                       std::function<int(int)> const& target_height, int* w, int* h) {
    SurfaceHandle const picture = load_trimmed_art(path, target_height);
    if (!picture) return nullptr;
    TextureHandle texture(SDL_CreateTextureFromSurface(menu.renderer, picture.get()));
    if (!texture) return texture;
    SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeLinear);
    *w = picture->w;
    *h = picture->h;
    return texture;
}

void load_cursor(MenuScreen& menu) {
    auto const height = [&menu](int art_h) {
        int const screen_h = menu.output_h > 0 ? menu.output_h : art_h;
        return std::max(1, static_cast<int>(std::lround(CURSOR_HEIGHT * screen_h)));
    };
    MenuCursor& cursor = menu.cursor;
    cursor.tex = load_art(menu, "art/mouse2b.png", height, &cursor.src.w, &cursor.src.h);
    if (!cursor.tex) report("cursor art/mouse2b.png");
}

void load_start_button(MenuScreen& menu) {
    auto const height = [&menu](int) {
        auto const rest = static_cast<double>(START_HEIGHT * static_cast<float>(menu.H));
        return std::max(1, static_cast<int>(std::lround(rest * menu.menu_scale * START_SPARE)));
    };
    int w = 0;
    int h = 0;
    menu.start.tex = load_art(menu, "art/start_racing4.png", height, &w, &h);
    if (!menu.start.tex) {
        report("start button art/start_racing4.png");
        return;
    }
    SDL_SetTextureBlendMode(menu.start.tex.get(), SDL_BLENDMODE_BLEND);
    menu.start.aspect = static_cast<double>(w) / h;
}

void make_thumbnails(MenuScreen& menu) {
    menu.tracks.thumbs.clear();
    menu.tracks.failed_picture.clear();
    menu.small_font = open_font(SMALL_FONT, menu.menu_scale);
    if (menu.small_font) TTF_SetFontKerning(menu.small_font.get(), 1);
    menu.caption_font = open_font(CAPTION_FONT, menu.menu_scale);
    menu.note_font = open_font(NOTE_FONT, menu.menu_scale);
    auto const pictures = discover_track_pngs();
    for (int slot = 1; slot <= ROW_SLOTS; ++slot) {
        std::string const& picture = pictures[static_cast<std::size_t>(slot)];
        if (picture.empty()) continue;
        TrackThumb thumb;
        if (build_track_thumb(thumb_maker(menu), slot, picture, thumb)) {
            menu.tracks.thumbs.push_back(std::move(thumb));
        } else {
            report(("track thumbnail " + picture).c_str());
            menu.tracks.failed_picture = track_name_from_path(picture);
        }
    }
    make_no_tracks_label(menu);
}

void make_switches(MenuScreen& menu) {
    constexpr std::array<char const*, ALL_SWITCHES.size()> WORDS{"bumps", "rumble", "red", "blue"};
    for (std::size_t i = 0; i < WORDS.size(); ++i) {
        menu.switches.words[i] = label(menu, menu.caption_font, WORDS[i]);
    }
    menu.switches.drives = label(menu, menu.caption_font, "computer drives");
    menu.switches.no_records = label(menu, menu.note_font, "no records are kept");
    menu.names.computer = label(menu, menu.mode_font, "computer");
}

void make_extra_thumbnail(MenuScreen& menu) {
    TrackThumb& extra = menu.tracks.extra_thumb;
    if (!extra.tex) return;
    int const slot = extra.slot;
    std::string const picture = discover_track_pngs()[static_cast<std::size_t>(slot)];
    if (!picture.empty()) build_track_thumb(thumb_maker(menu), slot, picture, extra);
}

void find_tracks(MenuTracks& tracks) {
    auto const files = discover_tracks();
    for (std::size_t slot = 1; slot < files.size(); ++slot) {
        tracks.has_track[slot] = !files[slot].empty();
    }
}

void load_sounds(Audio& audio, bool load_music) {
    audio.music_volume = 0.6F;
    if (load_music) start_menu_music(audio);
    // Those of the menu before are still there.
    if (audio.sfx_samples[DOOR_SLOT].empty()) {
        audio.load_sfx(DOOR_SLOT, "sounds/hollowreed-car-door-shut-297266.mp3");
    }
    if (audio.sfx_samples[ENGINE_SLOT].empty()) {
        audio.load_sfx(ENGINE_SLOT, "sounds/emberworks-car-engine-372477.mp3");
    }
}

void set_mouse_gain(MenuScreen& menu) {
    if (menu.output_w > 0) menu.gain_x = MOUSE_GAIN * menu.W / menu.output_w;
    if (menu.output_h > 0) menu.gain_y = MOUSE_GAIN * menu.H / menu.output_h;
}

void take_the_mouse(MenuScreen& menu) {
    menu.cursor.x = static_cast<float>(menu.W) / 2.0F;
    menu.cursor.y = static_cast<float>(menu.H) / 2.0F;
    set_mouse_gain(menu);
    take_mouse_for_menu();
    SDL_StopTextInput();
}

bool output_has_changed(MenuScreen const& menu) {
    int w = 0;
    int h = 0;
    SDL_GetRendererOutputSize(menu.renderer, &w, &h);
    return w != menu.output_w || h != menu.output_h;
}

} // namespace

ThumbMaker thumb_maker(MenuScreen const& menu) {
    return {menu.renderer, menu.menu_scale, menu.small_font.get(),
            menu.tracks.have_best ? &menu.tracks.best : nullptr};
}

SwitchPlaces switch_places(MenuScreen const& menu) {
    bool const has_rumble = menu.pads != nullptr && menu.pads->count() > 0;
    return {menu.mode, menu.names, menu_view(menu.W, menu.H), has_rumble};
}

void set_up_menu(MenuScreen& menu, bool load_music) {
    if (!take_kept_header(menu)) load_header(menu);
    prepare_sparkles(menu);
    measure_screen(menu);
    make_labels(menu);
    fill_names(menu);
    load_cursor(menu);
    flush_replaced_files();
    menu.tracks.have_best = load_best_laps(menu.tracks.best);
    make_thumbnails(menu);
    make_switches(menu);
    find_tracks(menu.tracks);
    load_start_button(menu);
    load_sounds(*menu.audio, load_music);
    menu.sparkle.intro_at = SDL_GetTicks();
    take_the_mouse(menu);
}

void fit_menu(MenuScreen& menu, unsigned now) {
    if (output_has_changed(menu)) {
        menu.resized_at = std::max(now, 1U);
        measure_screen(menu);
        make_labels(menu);
        set_mouse_gain(menu);
        for (NameField& field : menu.names.fields) {
            refresh_field(field, menu.mode_font.get(), menu.renderer);
        }
    }
    if (menu.resized_at == 0 || now - menu.resized_at < SETTLED_MS) return;
    menu.resized_at = 0;
    load_cursor(menu);
    make_thumbnails(menu);
    make_extra_thumbnail(menu);
    make_switches(menu);
    make_note_label(menu);
    load_start_button(menu);
    if (menu.letters.open) {
        open_letter_grid(menu.letters, menu.renderer, menu.menu_scale, menu.mode_font.get(),
                         menu.caption_font.get());
    }
}
