#include "screens/menu_music.h"

#include "audio/audio.h"

void start_menu_music(Audio& audio) {
    audio.load_music("music/Gallop Over Pine Hills -- game 1.mp3");
    audio.music_fade_step = 0.0015F;
    audio.music_playing = true;
}
