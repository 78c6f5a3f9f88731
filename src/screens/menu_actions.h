#pragma once

// What a player can do on the menu, whoever asks for it: a key, the mouse or a pad.

#include "screens/menu_screen.h"

bool launching(MenuScreen const& menu);
// Nothing while a launch runs.
void open_help(MenuScreen& menu, unsigned now);
void close_help(MenuScreen& menu, unsigned now);
// To the help's other page, 1 or 2.
void turn_help_page(MenuScreen& menu, int page);
void launch_if_chosen(MenuScreen& menu, unsigned now);
void choose_mode(MenuScreen& menu, int mode);
void choose_laps(MenuScreen& menu, int option);
void toggle_switch(MenuScreen& menu, Switch which);

NameField& focused_field(MenuScreen& menu);
// Shows a change of the field; the caret is seen at once after it.
void show_field(MenuScreen& menu, NameField& field, unsigned now);
void focus_field(MenuScreen& menu, int index, unsigned now);
void drop_focus(MenuScreen& menu);
void type_text(MenuScreen& menu, char const* text, unsigned now);

// A line that stands on the menu for a while.
void show_note(MenuScreen& menu, char const* text, unsigned now);
// Its label for the output's size.
void make_note_label(MenuScreen& menu);

// A press of a pad, in the menu and on the help screen.
void handle_menu_pad(MenuScreen& menu, PadPress const& press, unsigned now);
