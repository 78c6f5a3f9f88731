#include "platform/shipped_file.h"

#include <emscripten.h>
#include <utility>

// The page knows what is shipped and from where. At the path of a file that is not at hand stands
// something small in its place: nothing, or for a picture the same in small.
EM_ASYNC_JS(int, fetch_shipped, (char const* path),
            { return (await Module.fetchShipped(UTF8ToString(path))) ? 1 : 0; });
EM_JS(void, release_shipped, (char const* path), { Module.releaseShipped(UTF8ToString(path)); });

ShippedFile::ShippedFile(std::string path)
    : path_(std::move(path)), at_hand_(fetch_shipped(path_.c_str()) != 0) {}

ShippedFile::~ShippedFile() {
    release_shipped(path_.c_str());
}

bool is_at_hand(std::string const& /*path*/) {
    return false; // and if it was, it has been let go again
}
