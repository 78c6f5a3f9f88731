// Any bytes as the file of the last names: two names without blanks around them.

#include "input_file.h"
#include "records/player_names.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    for (std::string const& name : parse_player_names(as_text(data, size))) {
        require(!name.empty() && name.size() < 256);
        require(name.find_first_of("\n\0") == std::string::npos);
        require(name.front() != ' ' && name.front() != '\t' && name.back() != ' ');
    }
    return 0;
}
