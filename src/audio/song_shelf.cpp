#include "audio/song_shelf.h"

#include <algorithm>
#include <filesystem>

Samples const* SongShelf::find(std::string const& path) const {
    auto const song = songs_.find(path);
    return song == songs_.end() ? nullptr : &song->second;
}

void SongShelf::put(std::string const& path, Samples const& song) {
    if (!song.empty()) songs_[path] = song;
}

void SongShelf::want(std::string const& path) {
    std::error_code ignored;
    bool const known =
        find(path) != nullptr || std::find(wanted_.begin(), wanted_.end(), path) != wanted_.end();
    if (!known && std::filesystem::exists(path, ignored)) wanted_.push_back(path);
}

void SongShelf::work(int rate) {
    if (wanted_.empty()) return;
    if (!reader_) {
        reader_ = std::make_unique<Mp3Reader>(wanted_.front().c_str(), rate);
        return;
    }
    if (reader_->read_on()) return;
    Samples song = reader_->take();
    if (!song.empty()) songs_[wanted_.front()] = std::move(song);
    reader_.reset();
    wanted_.pop_front();
}
