#include "race/race_notices.h"

#include "base/car_size.h"
#include "base/texts.h"
#include "race/clocks.h"
#include "race/race_rules.h"
#include "records/printed.h"
#include "render/text.h"
#include "render/track_view.h"
#include "render/view_settings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr std::uint32_t GO_SHOWS_MS = 900; // as long as it sounds
constexpr std::uint32_t NAME_SHOWS_MS = 3000;
constexpr std::uint32_t FADE_MS = 300;
constexpr std::size_t NAME_BYTES = 40; // a longer name, from a file, is cut
constexpr std::array<SDL_Color, 2> NAME_COLORS{SDL_Color{255, 125, 115, 255},
                                               SDL_Color{130, 180, 255, 255}};

using Text = std::array<char, 64>;

std::size_t index_of(Player const& player) {
    return player.id == 2 ? 1 : 0;
}

// Full strength until the last FADE_MS of `shows_ms`.
std::uint8_t strength(std::uint32_t elapsed, std::uint32_t shows_ms) {
    if (elapsed >= shows_ms) return 0;
    return static_cast<std::uint8_t>(std::min(shows_ms - elapsed, FADE_MS) * 255 / FADE_MS);
}

void set_ghost_of(GhostGap& gap, Simulation const& sim, Player const& player) {
    if (sim.track == nullptr) return;
    set_ghost(gap, *sim.track, player.best_trace, player.best_trace_substeps);
}

void note_lap(RaceNotices& notices, Simulation const& sim, RaceEvent const& lap,
              std::uint32_t now) {
    Player const& player = lap.player == 2 ? sim.p2 : sim.p1;
    RaceResult& result = notices.results.at(index_of(player));
    bool const best = result.best_lap_ms == 0 || lap.time_ms < result.best_lap_ms;
    if (best) result.best_lap_ms = lap.time_ms;
    result.record = std::max(result.record, lap.record);
    GhostGap& gap = notices.gaps.at(index_of(player));
    end_gap(gap, lap.time_ms, now);
    if (lap.has_ghost) set_ghost_of(gap, sim, player);
    start_gap(gap);
}

void note_event(RaceNotices& notices, Simulation const& sim, RaceEvent const& event,
                std::uint32_t now) {
    std::size_t const who = event.player == 2 ? 1 : 0;
    switch (event.kind) {
    case RaceEventKind::CountdownBeep:
        notices.count = event.number;
        notices.count_tick = now;
        return;
    case RaceEventKind::ClockStarted:
        return start_gap(notices.gaps.at(who));
    case RaceEventKind::Lap:
        return note_lap(notices, sim, event, now);
    case RaceEventKind::Finished:
        notices.results.at(who).finished = true;
        return;
    case RaceEventKind::OutOfTime:
        notices.results.at(who).out_of_time = true;
        return;
    default:
        return;
    }
}

std::string display_name(Player const& player) {
    if (player.name.empty()) return texts::COLORS.at(index_of(player));
    if (player.name.size() <= NAME_BYTES) return player.name;
    std::size_t end = NAME_BYTES; // never in the middle of a letter
    while (end > 0 && (static_cast<unsigned char>(player.name[end]) & 0xC0U) == 0x80U) --end;
    return player.name.substr(0, end);
}

// Where a player's view shows cars at `places`, in cells, while its camera looks at `eye`.
ShownCars cars_in_view(Simulation const& sim, Player const& player, Vec2 eye,
                       std::array<Vec2, 2> const& places) {
    ShownCars cars;
    if (sim.track == nullptr) return cars;
    for (std::size_t i = 0; i < cars.at.size(); ++i) {
        cars.at.at(i) = point_in_view(player.view.viewport, *sim.track, eye, places.at(i));
    }
    cars.reach = CAR_HALF_LENGTH * CAR_MAGNIFIER * zoom_factor();
    return cars;
}

// The cars as they stood at the start, also once they drive: what is told then stays where it is.
ShownCars standing_cars(NoticePicture const& p, Player const& player) {
    std::array<Vec2, 2> const& starts = p.notices.starts;
    return cars_in_view(p.sim, player, starts.at(index_of(player)), starts);
}

void draw_countdown(NoticePicture const& p, Player const& player) {
    if (p.notices.count < 0) return;
    std::uint32_t const elapsed = p.now - p.notices.count_tick;
    std::uint8_t const alpha =
        p.notices.count < GO_STEP ? std::uint8_t{255} : strength(elapsed, GO_SHOWS_MS);
    if (alpha == 0) return;
    render_countdown(p.renderer, player.view.viewport, p.fonts, standing_cars(p, player),
                     texts::COUNTDOWN.at(static_cast<std::size_t>(p.notices.count)), alpha);
}

void draw_name(NoticePicture const& p, Player const& player) {
    std::uint8_t const alpha = strength(p.now - p.notices.start_tick, NAME_SHOWS_MS);
    if (alpha == 0 || player.name.empty()) return;
    render_name(p.renderer, player.view.viewport, p.fonts, standing_cars(p, player),
                display_name(player).c_str(), NAME_COLORS.at(index_of(player)), alpha);
}

// What a player is warned of, if anything.
char const* warning_for(RaceNotices const& notices, Player const& player) {
    if (notices.results.at(index_of(player)).out_of_time) return texts::OUT_OF_TIME;
    return player.wrong_way && player.view.finished_ms == 0 ? texts::WRONG_WAY : nullptr;
}

bool runs_out_of_time(Simulation const& sim, Player const& player) {
    return sim.first_finish_tick != 0 && player.view.finished_ms == 0;
}

Text time_left_text(Simulation const& sim, std::uint32_t now) {
    std::uint32_t const used = std::min(now - sim.first_finish_tick, OUT_OF_TIME_MS);
    Text text{};
    std::snprintf(text.data(), text.size(), texts::SECONDS_LEFT,
                  (OUT_OF_TIME_MS - used + 999) / 1000);
    return text;
}

void draw_warnings(NoticePicture const& p, Player const& player) {
    SDL_Rect const& rect = player.view.viewport;
    WarningPlaces const& places = p.notices.places.at(index_of(player));
    char const* const wrong = warning_for(p.notices, player);
    if (wrong != nullptr) render_warning(p.renderer, rect, p.fonts, wrong, places.wrong);
    if (!runs_out_of_time(p.sim, player)) return;
    render_time_left(p.renderer, rect, p.fonts, time_left_text(p.sim, p.now).data(),
                     places.time_left);
}

bool follows_ghost(Simulation const& sim, Player const& player, GhostGap const& gap) {
    return !gap.index.places.empty() && !not_started(player, sim.countdown.active) &&
           !player.wrong_way && player.view.finished_ms == 0;
}

void draw_gap(NoticePicture const& p, Player const& player) {
    GhostGap const& gap = p.notices.gaps.at(index_of(player));
    SDL_Rect const& rect = player.view.viewport;
    bool const split = gap.split_quarter != 0 && p.now - gap.split_tick < SPLIT_SHOWS_MS;
    if (!split && !(gap.shows && follows_ghost(p.sim, player, gap))) return;
    // Rounded here as it will read, so that what reads as none is not told as behind.
    double const seconds =
        split ? std::round(gap.split_ms) / 1000.0 : std::round(gap.gap_ms / 10.0) / 100.0;
    char const* const sign = seconds < 0.0 ? texts::LESS : texts::MORE;
    Text text{};
    if (split) {
        std::snprintf(text.data(), text.size(), texts::GHOST_SPLIT, gap.split_quarter, sign,
                      std::abs(seconds));
    } else {
        std::snprintf(text.data(), text.size(), texts::GHOST_GAP, sign, std::abs(seconds));
    }
    render_ghost_gap(p.renderer, rect, p.fonts, text.data(), seconds <= 0.0);
}

// How far the second came in behind the first.
std::string gap_text(RaceResult const& result, Player const& first, Player const& second) {
    if (!result.finished) return result.out_of_time ? texts::TOO_LATE : texts::STOPPED;
    int const laps = first.view.laps_done - second.view.laps_done;
    if (laps == 1) return texts::LAP_BEHIND;
    if (laps > 1) return printed(texts::LAPS_BEHIND, laps);
    double const behind =
        (second.finish_ms - second.race_start_ms) - (first.finish_ms - first.race_start_ms);
    auto const ms = static_cast<unsigned>(std::lround(std::max(behind, 0.0)));
    return printed("+%s", format_time_long(ms).c_str());
}

ResultRow result_row(RaceNotices const& notices, Simulation const& sim, Player const& player) {
    RaceResult const& result = notices.results.at(index_of(player));
    auto const now_ms = static_cast<double>(sim.sim_time_ms);
    ResultRow row;
    row.name = display_name(player);
    row.color = NAME_COLORS.at(index_of(player));
    row.total = format_time_long(total_clock(player, sim.countdown.active, now_ms));
    row.finished = result.finished;
    if (result.best_lap_ms != 0) row.best_lap = format_time_long(result.best_lap_ms);
    row.note = texts::RECORDS.at(static_cast<std::size_t>(std::clamp(result.record, 0, 2)));
    return row;
}

} // namespace

void start_notices(RaceNotices& notices, std::uint32_t now) {
    notices.start_tick = now;
    notices.count = -1;
    notices.results = {};
    for (GhostGap& gap : notices.gaps) {
        start_gap(gap);
        gap.split_quarter = 0;
    }
}

void note_starts(RaceNotices& notices, Simulation const& sim) {
    notices.starts = {Vec2{sim.p1.car.x, sim.p1.car.y}, Vec2{sim.p2.car.x, sim.p2.car.y}};
}

void note_events(RaceNotices& notices, Simulation const& sim, RaceEvents const& events,
                 std::uint32_t now) {
    for (RaceEvent const& event : events) note_event(notices, sim, event, now);
}

void note_ghosts(RaceNotices& notices, Simulation const& sim) {
    set_ghost_of(notices.gaps[0], sim, sim.p1);
    set_ghost_of(notices.gaps[1], sim, sim.p2);
}

void update_gaps(RaceNotices& notices, Simulation const& sim, CarState const& red,
                 CarState const& blue, double alpha, std::uint32_t now) {
    if (sim.track == nullptr || sim.game_over) return;
    // The drawn cars are up to a step behind the clock.
    double const clock =
        static_cast<double>(sim.sim_time_ms) - (1.0 - alpha) * static_cast<double>(STEP_MS);
    auto const update = [&](GhostGap& gap, Player const& player, CarState const& car) {
        if (!follows_ghost(sim, player, gap)) return;
        double const lap_ms = clock - player.lap_start_ms;
        if (lap_ms >= 0.0) update_gap(gap, *sim.track, car, lap_ms, now);
    };
    update(notices.gaps[0], sim.p1, red);
    update(notices.gaps[1], sim.p2, blue);
}

void place_warnings(RaceNotices& notices, Fonts const& fonts, Simulation const& sim,
                    CarState const& red, CarState const& blue, std::uint32_t now) {
    for (Player const* player : {&sim.p1, &sim.p2}) {
        PlayerView const& view = player->view;
        WarningPlaces& places = notices.places.at(index_of(*player));
        char const* const wrong = warning_for(notices, *player);
        bool const runs_out = runs_out_of_time(sim, *player);
        if (wrong == nullptr) places.wrong = 0.0;
        if (!runs_out) places.time_left = 0.0;
        bool const comes_up = wrong != nullptr && places.wrong == 0.0;
        bool const begins = runs_out && places.time_left == 0.0;
        if (!comes_up && !begins) continue;
        ShownCars const cars = cars_in_view(sim, *player, {view.cam_x, view.cam_y},
                                            {Vec2{red.x, red.y}, Vec2{blue.x, blue.y}});
        if (comes_up) places.wrong = warning_place(view.viewport, fonts, cars, wrong);
        if (begins) {
            places.time_left =
                time_left_place(view.viewport, fonts, cars, time_left_text(sim, now).data());
        }
    }
}

void draw_view_notices(NoticePicture const& picture, Player const& player, bool ghost_visible) {
    if (picture.sim.game_over || player.view.viewport.w <= 0) return;
    draw_countdown(picture, player);
    draw_name(picture, player);
    draw_warnings(picture, player);
    if (ghost_visible) draw_gap(picture, player);
}

ResultTable result_table(RaceNotices const& notices, Simulation const& sim) {
    Player const& first = sim.winner == 2 ? sim.p2 : sim.p1;
    Player const& second = sim.winner == 2 ? sim.p1 : sim.p2;
    ResultTable table;
    table.rows = {result_row(notices, sim, first), result_row(notices, sim, second)};
    table.rows[1].gap = gap_text(notices.results.at(index_of(second)), first, second);
    table.title = printed(texts::WINS, table.rows[0].name.c_str());
    table.title_color = NAME_COLORS.at(index_of(first));
    return table;
}
