#include "records/highscore_report.h"

#include "base/sdl_handles.h"
#include "platform/files.h"
#include "records/best_laps.h"
#include "records/ghost_trace.h"
#include "records/mem_buffer.h"
#include "records/miniature.h"
#include "records/pdf.h"
#include "records/printed.h"
#include "render/second_face.h"
#include "world/track_file.h"

#include <SDL_image.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <span>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int JPEG_QUALITY = 90;
constexpr char const* WINANSI_DASH = "\x97";

// The page, in points from its lower left corner.
constexpr double PAGE_CENTRE = 297.5;
constexpr std::size_t CARDS_PER_PAGE = 6; // 3 rows of 2, filled along the rows
constexpr double CARD_WIDTH = 245.5;
constexpr double CARD_HEIGHT = 202.0;
constexpr double PICTURE_WIDTH = 229.5; // at most
constexpr double PICTURE_HEIGHT = 150.0;

// Share of the size that a character is wide on average, as there are no font metrics here.
constexpr double BOLD_WIDTH = 0.56;
constexpr double REGULAR_WIDTH = 0.5;

// One slot of the track folder; both paths may be empty.
struct TrackFiles {
    std::string trk;
    std::string png;

    // By slot, as ::discover_tracks finds the tracks.
    static std::array<TrackFiles, 10> discover_tracks();
};

// One track of the report.
struct Card {
    std::string title;
    double seconds = 0.0;
    std::vector<std::uint8_t> jpeg; // the miniature; empty if there is no preview
    int jpeg_w = 0;                 // pixels
    int jpeg_h = 0;
    int image_obj = 0; // its object number, 0 while it has none
};

std::array<TrackFiles, 10> TrackFiles::discover_tracks() {
    std::array<TrackFiles, 10> slots;
    std::array<std::string, 10> const tracks = ::discover_tracks();
    for (std::size_t slot = 1; slot < slots.size(); ++slot) {
        if (tracks[slot].empty()) continue;
        std::error_code ignored;
        std::string const picture = picture_of_track(tracks[slot]);
        slots[slot].trk = tracks[slot];
        if (fs::is_regular_file(to_path(picture), ignored)) slots[slot].png = picture;
    }
    return slots;
}

std::string title_of(std::string const& trk, int slot) {
    if (trk.empty()) return "Track " + std::to_string(slot);
    std::string title = track_name_from_path(trk);
    std::replace(title.begin(), title.end(), '_', ' ');
    return title;
}

struct GridSize {
    int width = 0;
    int height = 0;
};

// The first two numbers of a track file; 0 if they make no grid.
GridSize read_grid_size(std::string const& trk) {
    std::ifstream file(to_path(trk));
    GridSize grid;
    if (!(file >> grid.width >> grid.height) || grid.width < 1 || grid.height < 1) return {};
    return grid;
}

void add_miniature(Card& card, TrackFiles const& files, std::string const& trace_file) {
    std::vector<SDL_FPoint> points;
    if (!trace_file.empty()) points = load_ghost_line(pref_path(trace_file.c_str()));
    GridSize const grid = points.empty() ? GridSize{} : read_grid_size(files.trk);
    SurfaceHandle const picture(build_miniature(files.png, points, grid.width, grid.height));
    if (!picture) return;

    MemBuffer buffer;
    SDL_RWops* stream = open_mem_buffer(buffer);
    if (stream == nullptr) return;
    if (IMG_SaveJPG_RW(picture.get(), stream, 0, JPEG_QUALITY) == 0) {
        card.jpeg = std::move(buffer.bytes);
        card.jpeg_w = picture->w;
        card.jpeg_h = picture->h;
    }
    SDL_FreeRW(stream);
}

std::vector<Card> make_cards(std::map<int, BestEntry> const& entries) {
    std::array<TrackFiles, 10> const tracks = TrackFiles::discover_tracks();
    std::vector<Card> cards;
    for (auto const& [slot, entry] : entries) {
        if (slot < 1 || slot > 9) continue;
        TrackFiles const& files = tracks[static_cast<std::size_t>(slot)];
        Card& card = cards.emplace_back();
        card.title = title_of(files.trk, slot);
        card.seconds = entry.seconds;
        if (!files.png.empty()) add_miniature(card, files, entry.trace_file);
    }
    return cards;
}

std::string today() {
    std::time_t const now = std::time(nullptr);
    std::tm const* local = std::localtime(&now);
    std::array<char, 16> text{};
    if (local == nullptr) return "";
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", local)};
}

std::string centred(Pdf const& pdf, double centre, double y, std::string const& text, double size,
                    bool bold) {
    double const factor = bold ? BOLD_WIDTH : REGULAR_WIDTH;
    double const width =
        pdf.width_in_letters(text, size).value_or(static_cast<double>(text.size()) * size * factor);
    return pdf.text_cmd(centre - width * 0.5, y, text, size, bold);
}

// Places the picture below the card's title; returns the height of its bottom edge.
double picture_commands(Pdf const& pdf, Card const& card, double left, double top,
                        std::string& commands) {
    double const k = std::min(PICTURE_WIDTH / card.jpeg_w, PICTURE_HEIGHT / card.jpeg_h);
    double const w = card.jpeg_w * k;
    double const h = card.jpeg_h * k;
    double const y = top - 24.0 - h;
    commands += pdf.image_cmd(left + (CARD_WIDTH - w) * 0.5, y, w, h, card.image_obj);
    return y;
}

std::string card_commands(Pdf const& pdf, Card const& card, std::size_t place) {
    std::size_t const column = place % 2;
    std::size_t const row = place / 2;
    double const left = 40.0 + 269.5 * static_cast<double>(column);
    double const top = 762.0 - 210.0 * static_cast<double>(row);
    double const centre = left + CARD_WIDTH * 0.5;
    std::string commands = pdf.frame_cmd(left, top - 196.0, CARD_WIDTH, CARD_HEIGHT);
    commands += centred(pdf, centre, top - 14.0, card.title, 13.0, true);
    double baseline = top - 172.0;
    if (card.image_obj != 0 && card.jpeg_w > 0 && card.jpeg_h > 0) {
        baseline = picture_commands(pdf, card, left, top, commands);
    } else {
        commands += pdf.text_cmd(centre - 33.0, top - 97.0, "(no preview)", 11.0, false);
    }
    return commands +
           centred(pdf, centre, baseline - 15.0, printed("%.3f s", card.seconds), 13.0, false);
}

std::string heading_of(std::string const& name, char const* dash) {
    return name + " " + dash + " Brindle Run High Scores";
}

void add_report_page(Pdf& pdf, std::string const& name, std::string const& date,
                     std::span<Card const> cards) {
    bool const in_letters = pdf.width_in_letters(name, 1.0).has_value();
    std::string const heading = heading_of(name, in_letters ? "\u2014" : WINANSI_DASH);
    std::string commands = centred(pdf, PAGE_CENTRE, 792.0, heading, 20.0, true);
    commands += centred(pdf, PAGE_CENTRE, 776.0, "best lap times  " + date, 10.0, false);
    std::vector<int> images;
    for (std::size_t place = 0; place < cards.size(); ++place) {
        commands += card_commands(pdf, cards[place], place);
        if (cards[place].image_obj != 0) images.push_back(cards[place].image_obj);
    }
    pdf.add_page(commands, images);
}

Pdf lay_out(std::string const& name, std::span<Card> cards) {
    Pdf pdf;
    std::vector<std::string> texts{heading_of(name, "\u2014")};
    for (Card& card : cards) {
        texts.push_back(card.title);
        if (card.jpeg.empty()) continue;
        card.image_obj = pdf.add_image(card.jpeg, card.jpeg_w, card.jpeg_h);
    }
    pdf.add_letters(SECOND_FACE, texts);
    std::string const date = today();
    for (std::size_t first = 0; first < cards.size(); first += CARDS_PER_PAGE) {
        std::size_t const count = std::min(CARDS_PER_PAGE, cards.size() - first);
        add_report_page(pdf, name, date, cards.subspan(first, count));
    }
    return pdf;
}

bool fail(std::string const& reason) {
    std::fprintf(stderr, "highscore-pdf: %s\n", reason.c_str());
    return false;
}

} // namespace

bool write_highscore_pdf(std::string const& name, std::string const& path) {
    IMG_Init(IMG_INIT_JPG | IMG_INIT_PNG);
    BestLapTable table;
    if (!load_best_lap_table(table)) {
        return fail("cannot read " + pref_path(BEST_LAPS_FILE));
    }
    auto const section = table.find(name);
    if (section == table.end() || section->second.empty()) {
        return fail("no recorded times for player \"" + name + "\"");
    }
    std::vector<Card> cards = make_cards(section->second);
    if (cards.empty()) return fail("nothing to print for \"" + name + "\"");
    if (!lay_out(name, cards).write(path)) return fail("cannot write " + path);
    std::printf("Wrote %s (%zu track%s) for \"%s\"\n", path.c_str(), cards.size(),
                cards.size() == 1 ? "" : "s", name.c_str());
    std::fflush(stdout);
    return true;
}
