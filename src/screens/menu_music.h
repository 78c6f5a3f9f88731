#pragma once

// The music that begins with the intro and goes on through the menu.

struct Audio;

void start_menu_music(Audio& audio);
