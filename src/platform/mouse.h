#pragma once

// The mouse is the menu's alone, where it moves a cursor that the program draws.

// Has the mouse tell how it moves without an end, at the edges of the screen too.
void take_mouse_for_menu();

// Keeps the mouse, which does nothing in a race, from leading anywhere else meanwhile.
void put_mouse_aside_for_race();
