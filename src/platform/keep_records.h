#pragma once

// Where the files of the preference folder live only as long as the program does, has them copied
// to where they last. Returns at once, so a race may be running. To be called after each change of
// a file there.
void keep_records();
