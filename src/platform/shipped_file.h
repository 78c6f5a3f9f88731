#pragma once

#include <string>

// A large file of the game's own (a track, its picture, a song) while it is read. Where such files
// are not all at hand, making one fetches it, which is waited for and shown to the player; ending
// its life lets it go again.
class ShippedFile {
public:
    explicit ShippedFile(std::string path);
    ~ShippedFile();
    ShippedFile(ShippedFile const&) = delete;
    ShippedFile& operator=(ShippedFile const&) = delete;

    // False if it could not be fetched; what stands at its path is then not the whole file. A file
    // that the game does not ship counts as at hand.
    [[nodiscard]] bool at_hand() const { return at_hand_; }

private:
    std::string path_;
    bool at_hand_ = true;
};

// Whether a file that the game ships can be read without being waited for.
bool is_at_hand(std::string const& path);
