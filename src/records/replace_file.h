#pragma once

// Replacing a file whole or not at all. The new content is written beside the old file and then
// takes its name in one step, so a process killed at any moment, or a full disk, leaves the old
// file or the new one, complete. At worst a kill leaves a neighbour, named like the file with a
// number and ".new" behind it, which nothing ever reads.
//
// Nothing waits for the disk: laps end in the middle of a race, and waiting there would be seen.
// So this is safety against the program's end and against lack of room, not against a power cut.

#include <initializer_list>
#include <string>
#include <string_view>

// Makes `pieces`, one after the other, the content of `path`. False, with the old file untouched
// and no neighbour left, if any of it fails. A symbolic link stays and the file that it names is
// replaced; a file that may not be written, or anything but a plain file, is left alone.
bool replace_file(std::string const& path, std::initializer_list<std::string_view> pieces);
// Why the last replacement failed, in a few words, where errno was 0 before it.
std::string failure_reason();
