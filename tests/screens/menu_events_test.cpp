#include "audio/audio.h"
#include "screens/menu_actions.h"
#include "support/canvas.h"
#include "support/files.h"
#include "support/keys.h"

#include <SDL_image.h>
#include <gtest/gtest.h>

#include <set>

namespace {

constexpr SDL_Rect VIEW{0, 0, 1280, 720};

// A menu with labels of known sizes, two thumbnails and no font, driven by events alone.
struct Menu : testing::Test {
    Menu() {
        menu_.renderer = canvas_.renderer();
        menu_.audio = &audio_;
        menu_.fullscreen = &fullscreen_;
        SDL_InitSubSystem(SDL_INIT_VIDEO); // for its map from scancodes to keys
        menu_.W = VIEW.w;
        menu_.H = VIEW.h;
        for (MenuLabel* label :
             {&menu_.mode.practice, &menu_.mode.race, &menu_.names.red_label,
              &menu_.names.blue_label, &menu_.mode.laps_caption, &menu_.help_label}) {
            size(*label, 60, 20);
        }
        for (MenuLabel& option : menu_.mode.lap_options) size(option, 10, 20);
        size(menu_.mode.arrow, 10, 20);
        for (MenuLabel& word : menu_.switches.words) size(word, 40, 15);
        size(menu_.switches.drives, 110, 15);
        for (int slot : {1, 3}) {
            TrackThumb& thumb = menu_.tracks.thumbs.emplace_back();
            thumb.slot = slot;
            thumb.w = 200;
            thumb.h = 130;
        }
        std::filesystem::create_directory("tracks");
        for (std::string const name : {"tracks/6_six", "tracks/7_seven"}) {
            write_file(name + ".trk", "");
            IMG_SavePNG(make_surface(200, 130, {9, 9, 9, 255}).get(), (name + ".png").c_str());
        }
        menu_.tracks.has_track[6] = menu_.tracks.has_track[7] = true;
    }

    static void size(MenuLabel& label, int w, int h) {
        label.w = w;
        label.h = h;
    }
    void press(SDL_Scancode code, bool repeated = false) {
        handle_menu_event(menu_, key_event(code, repeated), now_);
    }
    void click(int x, int y) {
        menu_.cursor.x = static_cast<float>(x);
        menu_.cursor.y = static_cast<float>(y);
        SDL_Event event{};
        event.type = SDL_MOUSEBUTTONDOWN;
        handle_menu_event(menu_, event, now_);
    }
    std::vector<SDL_Rect> rects() { return track_rects(menu_.tracks, VIEW, now_); }

    WorkingDir folder_;
    Canvas canvas_{16, 16};
    Audio audio_;
    bool fullscreen_ = false;
    MenuScreen menu_;
    unsigned now_ = 5000;
};

} // namespace

TEST_F(Menu, NeedsATrackToLaunchAndThenRunsToBlack) {
    press(SDL_SCANCODE_RETURN);
    EXPECT_EQ(menu_.launch.launch_at, 0U);
    press(SDL_SCANCODE_2); // no such thumbnail
    EXPECT_EQ(menu_.tracks.selected_track, 0);
    press(SDL_SCANCODE_3);
    EXPECT_EQ(menu_.tracks.selected_row, 1);
    press(SDL_SCANCODE_SPACE);
    EXPECT_EQ(menu_.launch.launch_at, 5000U);
    press(SDL_SCANCODE_SLASH);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::MENU) << "no help during a launch";
    EXPECT_EQ(advance_launch(menu_, 5449), 0.0F);
    EXPECT_FALSE(menu_.launch.engine_played);
    EXPECT_EQ(advance_launch(menu_, 6450), 0.0F);
    EXPECT_TRUE(menu_.launch.engine_played);
    EXPECT_FLOAT_EQ(advance_launch(menu_, 6700), 0.5F);
    EXPECT_TRUE(menu_.running);
    EXPECT_FLOAT_EQ(advance_launch(menu_, 6950), 1.0F);
    EXPECT_FALSE(menu_.running);
    EXPECT_TRUE(menu_.launch.started);
}

TEST_F(Menu, HearsNoKeyThatIsStillHeldFromTheRace) {
    press(SDL_SCANCODE_3);
    for (SDL_Scancode const key : {SDL_SCANCODE_ESCAPE, SDL_SCANCODE_F11, SDL_SCANCODE_RETURN,
                                   SDL_SCANCODE_SPACE, SDL_SCANCODE_KP_ENTER}) {
        press(key, true);
    }
    EXPECT_TRUE(menu_.running);
    EXPECT_FALSE(fullscreen_);
    EXPECT_EQ(menu_.launch.launch_at, 0U);
    menu_.screen_phase = ScreenPhase::HELP;
    press(SDL_SCANCODE_ESCAPE, true);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::HELP);
    press(SDL_SCANCODE_A, true);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::FROM_HELP);
    menu_.screen_phase = ScreenPhase::MENU;

    press(SDL_SCANCODE_F1);
    menu_.names.fields[0].text = "Zoe ";
    press(SDL_SCANCODE_ESCAPE, true);
    EXPECT_EQ(menu_.names.focus, 0);
    press(SDL_SCANCODE_F2);
    EXPECT_EQ(menu_.names.fields[0].text, "Zoe");
    menu_.names.fields[1].text = " Ann";
    press(SDL_SCANCODE_RETURN);
    EXPECT_EQ(menu_.names.fields[1].text, "Ann");
    press(SDL_SCANCODE_ESCAPE);
    EXPECT_FALSE(menu_.running);
}

TEST_F(Menu, MouseHitsWhatItPointsAtToThePixel) {
    click(1200, 381); // the blue row reaches to the view's right edge
    EXPECT_EQ(menu_.names.focus, 1);
    click(921 - 69, 345); // the box begins at the label
    EXPECT_EQ(menu_.names.focus, -1);
    click(921 - 67, 345);
    EXPECT_EQ(menu_.names.focus, 0);
    click(rects()[1].x, rects()[1].y);
    EXPECT_EQ(menu_.tracks.selected_track, 3);
    EXPECT_EQ(menu_.names.focus, -1);
    SDL_Rect const ten = lap_option_box(menu_.mode, VIEW, 2);
    click(ten.x, ten.y);
    EXPECT_EQ(menu_.mode.lap_index, 0) << "not on show in practice";
    SDL_Rect const race = mode_row_box(menu_.mode, VIEW, MODE_RACE);
    click(race.x + race.w - 1, race.y);
    EXPECT_EQ(menu_.mode.selected, MODE_RACE);
    click(ten.x, ten.y);
    EXPECT_EQ(menu_.mode.lap_index, 2);
    // Help: 22 pixels wide, 11 from the corner.
    click(1280 - 11, 720 - 12);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::MENU);
    click(1280 - 12, 720 - 12);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::TO_HELP);
}

TEST_F(Menu, AHiddenTrackSlidesInSwapsAndLeaves) {
    int const alone = rects()[0].x;
    press(SDL_SCANCODE_6);
    now_ += 350;
    EXPECT_EQ(rects().size(), 3U);
    EXPECT_EQ(rects()[0].x, alone - 108);
    SDL_Texture* const six = menu_.tracks.extra_thumb.tex.get();
    press(SDL_SCANCODE_6);
    EXPECT_EQ(menu_.tracks.extra_thumb.tex.get(), six) << "not loaded again";
    press(SDL_SCANCODE_7);
    TrackFactors factors = track_factors(menu_.tracks, now_ + 175);
    EXPECT_FLOAT_EQ(factors.swap_t, 0.5F);
    EXPECT_FLOAT_EQ(factors.extra_alpha, 0.5F);
    EXPECT_FLOAT_EQ(factors.slide, 1.0F);
    now_ += 400;
    press(SDL_SCANCODE_1);
    factors = track_factors(menu_.tracks, now_ + 175);
    EXPECT_FLOAT_EQ(factors.slide, 1.5F);
    EXPECT_NE(factors.extra, nullptr);
    EXPECT_EQ(track_factors(menu_.tracks, now_ + 350).extra, nullptr);
    EXPECT_EQ(rects()[0].x, alone);
}

TEST_F(Menu, SwitchesFlipByKeyAndMouseInFreeRoom) {
    RaceSwitches const& race = menu_.switches.race;
    for (auto const& [key, value] : {std::pair{SDL_SCANCODE_B, &race.bumps},
                                     {SDL_SCANCODE_F3, &race.computer_red},
                                     {SDL_SCANCODE_F4, &race.computer_blue}}) {
        press(key);
        EXPECT_TRUE(*value);
        EXPECT_FALSE(is_recorded(race));
    }
    std::vector<SDL_Rect> taken = rects();
    for (int row : {0, 1}) {
        taken.push_back(mode_row_box(menu_.mode, VIEW, row));
        taken.push_back(name_row_box(menu_.names, VIEW, row));
    }
    for (std::size_t i : {0U, 1U, 2U}) taken.push_back(lap_option_box(menu_.mode, VIEW, i));
    for (Switch const which : {Switch::Bumps, Switch::ComputerRed, Switch::ComputerBlue}) {
        SDL_Rect const box = switch_box(menu_.switches, switch_places(menu_), which);
        for (SDL_Rect const& other : taken) EXPECT_FALSE(SDL_HasIntersection(&box, &other));
        click(box.x, box.y);
        taken.push_back(box);
    }
    EXPECT_TRUE(is_recorded(race));
    EXPECT_EQ(switch_box(menu_.switches, switch_places(menu_), Switch::Rumble).w, 0) << "no pad";
}

TEST_F(Menu, EveryChoiceIsReachedFromTheFirstByDirections) {
    menu_.mode.selected = MODE_RACE;
    press(SDL_SCANCODE_6);
    now_ += 400;
    std::vector<FocusItem> const items = focus_items(menu_, now_);
    EXPECT_EQ(items.size(), 3U + 2 + 3 + 2 + 3 + 1); // tracks, modes, laps, names, switches, help
    std::set<FocusItem const*> reached{&items.front()};
    for (std::size_t before = 0; before != reached.size();) {
        before = reached.size();
        for (FocusItem const* from : std::set(reached)) {
            for (auto const& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
                FocusItem const* const next = neighbour(items, *from, dx, dy);
                if (next != nullptr) reached.insert(next);
            }
        }
    }
    EXPECT_EQ(reached.size(), items.size());
    // To the right of the tracks lie the hidden ones; A on what is chosen starts.
    for (int const slot : {7, 7}) { // there is none behind it
        menu_.focus = {FocusKind::Extra, 0, {}};
        handle_menu_pad(menu_, {PadButton::Right, 0}, now_);
        EXPECT_EQ(menu_.tracks.selected_track, slot);
    }
    now_ += 400;
    menu_.focus = {FocusKind::Extra, 0, {}};
    handle_menu_pad(menu_, {PadButton::A, 0}, now_);
    EXPECT_EQ(menu_.launch.launch_at, now_);
}

TEST_F(Menu, HelpHasASecondPageAndOpensByAnyKeyThatTypesAQuestionMark) {
    SDL_Event typed{};
    typed.type = SDL_TEXTINPUT;
    typed.text.text[0] = '?';
    press(SDL_SCANCODE_F1);
    handle_menu_event(menu_, typed, now_);
    EXPECT_EQ(menu_.names.fields[0].text, "?");
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::MENU);
    press(SDL_SCANCODE_RETURN);
    handle_menu_event(menu_, typed, now_);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::TO_HELP);
    menu_.screen_phase = ScreenPhase::HELP;
    press(SDL_SCANCODE_RIGHT);
    EXPECT_EQ(menu_.help_page.number, 2);
    press(SDL_SCANCODE_LEFT);
    EXPECT_EQ(menu_.help_page.number, 1);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::HELP);
    press(SDL_SCANCODE_LEFT);
    EXPECT_EQ(menu_.screen_phase, ScreenPhase::FROM_HELP) << "as any other key";
}

TEST(LetterGrid, HasALetterInEveryCellAndNoEdge) {
    LetterGrid grid;
    std::set<std::string> letters;
    for (grid.page = 0; grid.page < 4; ++grid.page) {
        for (int i = 0; i < GRID_COLUMNS * GRID_LETTER_ROWS; ++i) {
            grid.row = i / GRID_COLUMNS;
            EXPECT_EQ(grid.column, i % GRID_COLUMNS);
            EXPECT_EQ(count_code_points(focused_letter(grid)), 1) << i;
            letters.insert(focused_letter(grid));
            move_in_grid(grid, 1, 0);
        }
    }
    EXPECT_EQ(letters.size(), 160U - 14) << "digits and signs are on both plain pages";
    grid = {};
    grid.column = 9;
    move_in_grid(grid, 0, -1); // up from the top: the last of the four keys
    EXPECT_EQ(focused_letter(grid), "");
    EXPECT_EQ(focused_key(grid), GridKey::Done);
    move_in_grid(grid, 1, 0);
    EXPECT_EQ(focused_key(grid), GridKey::Page);
}

TEST(MenuLayout, TheViewIsTheLargestWideRectangle) {
    for (auto const& [w, h, wanted] : {std::tuple{1280, 720, VIEW},
                                       {1680, 720, {200, 0, 1280, 720}},
                                       {1280, 1024, {0, 152, 1280, 720}}}) {
        SDL_Rect const view = menu_view(w, h);
        EXPECT_TRUE(SDL_RectEquals(&view, &wanted)) << w << " x " << h;
    }
}
