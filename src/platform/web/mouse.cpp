#include "platform/mouse.h"

#include <SDL.h>

#include <emscripten.h>

// A page may hold the mouse only in answer to the player, and a browser then takes Esc for itself:
// so the page waits for a click in the menu, and nothing holds the mouse in a race.
EM_JS(void, offer_mouse, (int offered), { Module.offerMouse(offered != 0); });

void take_mouse_for_menu() {
    offer_mouse(1);
}

void put_mouse_aside_for_race() {
    offer_mouse(0);
}
