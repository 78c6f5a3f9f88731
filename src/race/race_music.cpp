#include "audio/audio.h"
#include "audio/music_fade.h"
#include "race/game_loop.h"
#include "screens/menu_music.h"

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr double GAME_OVER_MUSIC_FADE_S = 2.0;
constexpr float GAME_OVER_MUSIC_VOLUME = 0.5F;

constexpr std::array<char const*, 4> RACE_MUSIC{
    "music/Gallop Over Pine Hills -- game 2.mp3",
    "music/Booting GEM Dreams.mp3",
    "music/Relentless Grid.mp3",
    "music/Twin Rivers C64.mp3",
};

constexpr char const* GAME_OVER_MUSIC = "music/HiScore - Meadow Run Arcade 2.mp3";

} // namespace

void GameLoop::apply_music() {
    bool const play = sim.music_on && music_enabled;
    if (play) audio.music_fade_step = QUICK_FADE_STEP;
    audio.music_playing = play;
}

char const* GameLoop::pick_race_music() {
    music_index = next_music_index;
    next_music_index = std::rand() % static_cast<int>(RACE_MUSIC.size());
    if (next_music_index == music_index) {
        next_music_index = (music_index + 1) % static_cast<int>(RACE_MUSIC.size());
    }
    return RACE_MUSIC.at(static_cast<std::size_t>(music_index));
}

void GameLoop::expect_music() {
    std::vector<std::string> songs;
    if (sim.laps > 0 && !sim.game_over) songs.emplace_back(GAME_OVER_MUSIC);
    songs.emplace_back(RACE_MUSIC.at(static_cast<std::size_t>(next_music_index)));
    songs.emplace_back(MENU_MUSIC);
    audio.expect_music(songs);
}

void GameLoop::silence_race_music() {
    sim.music_on = false;
    sim.music_start_tick = 0;
    audio.music_playing = false;
}

void GameLoop::start_game_over_music() {
    audio.load_music(GAME_OVER_MUSIC);
    expect_music();
    audio.music_volume = GAME_OVER_MUSIC_VOLUME;
    sim.music_on = true;
    if (!music_enabled) return;
    audio.music_fade_step = fade_step_of(audio, GAME_OVER_MUSIC_FADE_S);
    audio.music_playing = true;
}
