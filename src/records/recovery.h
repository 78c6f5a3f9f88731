#pragma once

// What a program that came to a sudden end, by a kill or a power cut, left in the folder of the
// records: files that may be empty or torn, and beside them the neighbours of replace_file.h.

#include <string>

// Sets every record right that has neighbours, then removes these. The table takes the better lap
// of each player and slot of all that is whole; of a ghost and of the names, the file itself counts
// if it is whole, else the newest neighbour that is. Only while no game writes to the folder. What
// cannot be written stays as it is, with its neighbours, for another time.
void recover_records(std::string const& folder);
