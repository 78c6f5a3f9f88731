#pragma once

// The mode that prints what each stick and button does.

// The process's exit status; with a joystick attached it only ends with the process.
int run_gamepad_test();
