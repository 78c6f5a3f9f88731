#include "shell/own_folder.h"

#include "platform/files.h"
#include "world/track_file.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr char const* NOTE = ".links";
constexpr char const* THUMBNAILS = ".cache/thumbs";

// What the last start linked to.
struct Links {
    std::string version;
    fs::path data;
};

Links read_note(fs::path const& own) {
    std::ifstream file(own / NOTE);
    Links links;
    std::string data;
    std::getline(file, links.version);
    std::getline(file, data);
    links.data = to_path(data);
    return links;
}

void write_note(fs::path const& own, fs::path const& data) {
    std::ofstream(own / NOTE) << BRINDLE_VERSION << '\n' << to_text(data) << '\n';
}

// Empty for anything but a link.
fs::path target_of(fs::path const& link) {
    std::error_code error;
    fs::path target = fs::read_symlink(link, error);
    return error ? fs::path() : target;
}

std::vector<fs::path> files_of(fs::path const& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        files.push_back(entry->path());
    }
    return files;
}

class OwnFolder {
public:
    OwnFolder(fs::path const& own, fs::path const& data)
        : own_(own), data_(data), last_(read_note(own)),
          upgraded_(last_.version != BRINDLE_VERSION || last_.data != data) {}

    bool refresh() {
        std::error_code error;
        fs::create_directories(own_ / "tracks", error);
        if (error) return false;
        if (!links_for_everybody()) return forget_other_data();
        bool whole = true;
        for (char const* name : {"art", "music", "sounds"}) whole = link(name) && whole;
        whole = link_tracks() && whole;
        if (whole && upgraded_) write_note(own_, data_);
        return whole;
    }

private:
    bool made_by_us(fs::path const& name) const {
        fs::path const target = target_of(own_ / name);
        return !target.empty() && (target == data_ / name || target == last_.data / name);
    }

    // What links tell by themselves: the thumbnails were made from pictures of other data.
    [[nodiscard]] bool forget_other_data() const {
        std::error_code ignored;
        if (!upgraded_) return true;
        fs::remove_all(own_ / THUMBNAILS, ignored);
        write_note(own_, data_);
        return true;
    }

    // Whether `name` stands for the data's file, or for one that the player has put there.
    bool link(fs::path const& name) const {
        std::error_code error;
        if (!fs::exists(data_ / name, error)) return true;
        fs::path const place = own_ / name;
        bool const gone = fs::is_symlink(place, error) && !fs::exists(place, error);
        bool const stale = gone || (upgraded_ && made_by_us(name));
        if (!stale && fs::exists(place, error)) return true;
        if (stale) fs::remove(place, error);
        // A picture's thumbnail was made from what the name stood for before.
        fs::remove(own_ / THUMBNAILS / name.filename(), error);
        fs::create_symlink(data_ / name, place, error);
        return target_of(place) == data_ / name; // also where another start was quicker
    }

    // Takes links away that are not wanted any more, and links what is.
    bool link_tracks() const {
        std::vector<fs::path> const present = files_of(own_ / "tracks");
        std::array<bool, 10> taken{}; // by slot: the player has a track of their own
        for (fs::path const& file : present) {
            std::error_code error;
            bool const own = fs::is_regular_file(file, error) && !made_by_us(relative(file));
            if (own && file.extension() == ".trk") taken[slot_of_file(file)] = true;
        }
        for (fs::path const& file : present) {
            std::error_code error;
            bool const wanted =
                !taken[slot_of_file(file)] && fs::exists(data_ / relative(file), error);
            if (!wanted && made_by_us(relative(file))) fs::remove(file, error);
        }
        std::vector<fs::path> const shipped = files_of(data_ / "tracks");
        return std::all_of(shipped.begin(), shipped.end(), [&](fs::path const& file) {
            std::size_t const slot = slot_of_file(file);
            return slot == 0 || taken[slot] || link(relative(file));
        });
    }

    static fs::path relative(fs::path const& track) { return "tracks" / track.filename(); }

    fs::path own_;
    fs::path data_;
    Links last_;
    bool upgraded_; // other data than at the last start
};

} // namespace

bool refresh_own_folder(fs::path const& own, fs::path const& data) {
    return OwnFolder(own, data).refresh();
}
