#include "screens/menu_music.h"

#include "audio/music_fade.h"

void start_menu_music(Audio& audio) {
    audio.load_music(MENU_MUSIC);
    audio.music_fade_step = QUICK_FADE_STEP;
    audio.music_playing = true;
}
