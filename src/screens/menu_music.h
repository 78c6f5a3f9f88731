#pragma once

// The music that begins with the intro and goes on through the menu.

struct Audio;

constexpr char const* MENU_MUSIC = "music/Gallop Over Pine Hills -- game 1.mp3";

void start_menu_music(Audio& audio);
