#pragma once

// Replacing a file whole or not at all. The new content is written beside the old file and then
// takes its name in one step, so a process killed at any moment, or a full disk, leaves the old
// file or the new one, complete.
//
// A power cut is another matter: names and contents reach the disk in any order, so the new file
// may be found empty or torn. Laps end in the middle of a race, and waiting for the disk there
// would be seen. So the old file stays beside the new one, named like it with a number and ".new"
// behind it, until flush_replaced_files has waited at a calm moment. What a program that came to a
// sudden end left beside a file is looked at by the next one (recovery.h).

#include <initializer_list>
#include <string>
#include <string_view>

// Makes `pieces`, one after the other, the content of `path`. False, with the old file untouched
// and no neighbour left, if any of it fails. A symbolic link stays and the file that it names is
// replaced; a file that may not be written, or anything but a plain file, is left alone.
bool replace_file(std::string const& path, std::initializer_list<std::string_view> pieces);
// Why the last replacement failed, in a few words, where errno was 0 before it.
std::string failure_reason();

// Waits until all files replaced so far have reached the disk, then lets their old ones go. To be
// called where nobody is driving; the end of the program does so, too.
void flush_replaced_files();
// A part of that which waits for the disk only once, for where a picture stands still and is shown
// on. True while there is more to do; false also if the disk fails, for another time.
bool flush_a_step();

// Has the names in the folder of `path` reach the disk.
bool flush_folder_of(std::string const& path);

// The file beside which `path` may have been left: empty if it is not such a neighbour.
std::string replaced_by_neighbour(std::string const& path);
