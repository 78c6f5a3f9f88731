#include "screens/finish_sequence.h"

#include "audio/music_fade.h"
#include "audio/sound_slots.h"
#include "platform/present.h"

#include <algorithm>

namespace {

constexpr float CHIME_VOLUME = 0.6F;
constexpr double CROWD_VOLUME = 0.8;
constexpr float FANFARE_VOLUME = 1.0F;

// The timeline, in milliseconds after the first car has finished.
constexpr std::uint32_t CROWD_AT_MS = 500;
constexpr std::uint32_t CROWD_FADE_AT_MS = 6000;
constexpr double CROWD_FADE_MS = 2000.0;
constexpr std::uint32_t FANFARE_AT_MS = 7000;

// When shown alone the screen stays until the fanfare has rung out, and a little longer.
constexpr std::uint32_t SCREEN_REST_MS = FANFARE_AT_MS + 300;

Shared<float>& slot_volume(Audio& audio, int slot) {
    return audio.sfx_volume[static_cast<std::size_t>(slot)];
}

void play_once(bool& played, Audio& audio, int slot, float volume) {
    if (played) return;
    audio.request_sfx(slot, volume);
    played = true;
}

// From now on the fanfare only gets quieter, and one that has not begun never does.
void fade_out_fanfare(FinishSeq& seq, Audio& audio, std::uint32_t now) {
    seq.fanfare_played = true;
    float faded = 1.0F;
    if (seq.game_over_fade_ms != 0) {
        faded = std::min(1.0F, static_cast<float>(now - seq.game_over_at) /
                                   static_cast<float>(seq.game_over_fade_ms));
    }
    slot_volume(audio, FANFARE_SLOT) = FANFARE_VOLUME - faded;
}

void fade_out_crowd(Audio& audio, std::uint32_t since_fade_ms) {
    double const faded = std::min(1.0, since_fade_ms / CROWD_FADE_MS);
    slot_volume(audio, CROWD_SLOT) = static_cast<float>(CROWD_VOLUME * (1.0 - faded));
}

enum class Leave { No, Quit, Skip };

Leave drain_events() {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_QUIT) return Leave::Quit;
        if (event.type == SDL_KEYDOWN && event.key.keysym.scancode == SDL_SCANCODE_ESCAPE) {
            return Leave::Skip;
        }
    }
    return Leave::No;
}

void show_black(SDL_Renderer* renderer) {
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
    present_frame(renderer);
}

} // namespace

void finish_seq_load(Audio& audio) {
    audio.load_sfx(CHIME_SLOT, "sounds/openclip_circle-goodresult-82807.mp3");
    audio.load_sfx(CROWD_SLOT, "sounds/tallycraft-crowd-cheering-314920.mp3");
    audio.load_sfx(FANFARE_SLOT, "sounds/brightfold-exhilarating-electro-153282.mp3");
}

void finish_seq_start(FinishSeq& seq, unsigned now) {
    seq = {};
    seq.started_at = now;
    seq.active = true;
}

void finish_seq_update(FinishSeq& seq, Audio& audio, unsigned now) {
    if (!seq.active) return;
    std::uint32_t const t = now - seq.started_at;
    play_once(seq.chime_played, audio, CHIME_SLOT, CHIME_VOLUME);
    if (t >= CROWD_AT_MS) {
        play_once(seq.crowd_played, audio, CROWD_SLOT, static_cast<float>(CROWD_VOLUME));
    }
    if (seq.game_over_at != 0) {
        fade_out_fanfare(seq, audio, now);
    } else if (t >= FANFARE_AT_MS) {
        play_once(seq.fanfare_played, audio, FANFARE_SLOT, FANFARE_VOLUME);
    }
    if (t >= CROWD_FADE_AT_MS) fade_out_crowd(audio, t - CROWD_FADE_AT_MS);
}

void finish_seq_game_over(FinishSeq& seq, unsigned now, unsigned fade_ms) {
    if (!seq.active || seq.game_over_at != 0) return;
    seq.game_over_fade_ms = fade_ms;
    seq.game_over_at = std::max(now, 1U); // 0 keeps meaning not yet
}

void finish_seq_stop(FinishSeq& seq, Audio& audio) {
    for (int const slot : {CHIME_SLOT, CROWD_SLOT, FANFARE_SLOT}) slot_volume(audio, slot) = 0.0F;
    seq.active = false;
}

float finish_seq_music_fade_s() {
    return 5.0F;
}

unsigned finish_sequence_length_ms(Audio const& audio) {
    auto const samples = static_cast<float>(audio.sfx_samples[FANFARE_SLOT].size());
    auto const rate = static_cast<float>(device_rate(audio));
    return static_cast<std::uint32_t>(samples / rate * 1000.0F) + SCREEN_REST_MS;
}

bool run_finish_sequence(SDL_Window* /*window*/, SDL_Renderer* renderer, Audio& audio) {
    finish_seq_load(audio);
    std::uint32_t const end_ms = finish_sequence_length_ms(audio);
    std::uint32_t const start = SDL_GetTicks();
    FinishSeq seq;
    finish_seq_start(seq, start);
    while (true) {
        std::uint32_t const now = SDL_GetTicks();
        Leave const leave = drain_events();
        if (leave != Leave::No) return leave == Leave::Skip;
        finish_seq_update(seq, audio, now);
        show_black(renderer);
        if (now - start >= end_ms) return true;
    }
}
