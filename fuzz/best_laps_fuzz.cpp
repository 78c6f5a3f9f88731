// Any bytes as the table of best laps: a record driven on top of them is kept, and nobody is lost.

#include "input_file.h"
#include "records/best_laps.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    setenv("XDG_DATA_HOME", scratch_folder().c_str(), 1); // before the folder is first asked for
    static std::string const path = pref_path("best_lap_times.txt");
    write_bytes(path, data, size);

    BestLapTable before;
    require(load_best_lap_table(before));
    int const rank = record_best_lap("Gadget", 1, 1.0, "Gadget.coast.trace");
    BestLapTable after;
    require(load_best_lap_table(after));
    if (rank == 0) {
        require(before["Gadget"][1].seconds <= 1.0);
    } else {
        require(after["Gadget"][1].seconds == 1.0);
        require(best_lap_trace("Gadget", 1) == "Gadget.coast.trace");
    }
    for (auto const& [name, entries] : before) {
        for (auto const& [slot, entry] : entries) require(after[name].count(slot) == 1);
    }
    return 0;
}
