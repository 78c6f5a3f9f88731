#pragma once

// Connects standard output and standard error with the console that the program was started from,
// where a program with windows has none by itself. To be called first.
void join_console();
