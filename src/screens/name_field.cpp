#include "screens/name_field.h"

#include "render/colors.h"
#include "render/rendered_text.h"
#include "render/second_face.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr char const* BLANKS = " \t";

bool is_continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t caret(NameField const& field) {
    return static_cast<std::size_t>(std::max(0, field.cursor));
}

std::size_t previous_code_point(std::string const& text, std::size_t at) {
    if (at == 0) return 0;
    --at;
    while (at > 0 && is_continuation(text[at])) --at;
    return at;
}

std::size_t next_code_point(std::string const& text, std::size_t at) {
    if (at >= text.size()) return text.size();
    ++at;
    while (at < text.size() && is_continuation(text[at])) ++at;
    return at;
}

void clear_field(NameField& field) {
    field.text.clear();
    field.cursor = 0;
}

void delete_before(NameField& field) {
    std::size_t const from = previous_code_point(field.text, caret(field));
    field.text.erase(from, caret(field) - from);
    field.cursor = static_cast<int>(from);
}

void delete_at(NameField& field) {
    std::size_t const end = next_code_point(field.text, caret(field));
    field.text.erase(caret(field), end - caret(field));
}

} // namespace

int count_code_points(std::string_view text) {
    return static_cast<int>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !is_continuation(byte); }));
}

bool insert_text(NameField& field, std::string_view typed) {
    if (count_code_points(field.text) + count_code_points(typed) > MAX_NAME_LENGTH) return false;
    field.text.insert(caret(field), typed);
    field.cursor += static_cast<int>(typed.size());
    return true;
}

bool edit_field(NameField& field, SDL_Keysym const& key) {
    bool const ctrl = (key.mod & KMOD_CTRL) != 0;
    switch (key.sym) {
    case SDLK_HOME:
        field.cursor = 0;
        return true;
    case SDLK_END:
        field.cursor = static_cast<int>(field.text.size());
        return true;
    case SDLK_LEFT:
        field.cursor = static_cast<int>(previous_code_point(field.text, caret(field)));
        return true;
    case SDLK_RIGHT:
        field.cursor = static_cast<int>(next_code_point(field.text, caret(field)));
        return true;
    case SDLK_BACKSPACE:
        ctrl ? clear_field(field) : delete_before(field);
        return true;
    case SDLK_DELETE:
        delete_at(field);
        return true;
    case SDLK_k:
        if (ctrl) clear_field(field);
        return ctrl;
    default:
        return false;
    }
}

bool trim_blanks(NameField& field) {
    std::size_t const first = std::min(field.text.find_first_not_of(BLANKS), field.text.size());
    std::size_t const end = field.text.find_last_not_of(BLANKS) + 1;
    if (first == 0 && end == field.text.size()) return false;
    field.text = field.text.substr(first, std::max(first, end) - first);
    field.cursor = static_cast<int>(field.text.size());
    return true;
}

void refresh_field(NameField& field, TTF_Font* font, SDL_Renderer* renderer) {
    field.tex.reset();
    field.w = field.h = field.caret_x = 0;
    if (font == nullptr) return;
    field.h = TTF_FontHeight(font);
    RenderedText line = render_text(renderer, font, field.text.c_str(), WHITE);
    if (line.tex) {
        field.tex = std::move(line.tex);
        field.w = line.w;
        field.h = line.h;
    }
    if (field.cursor < 1) return;
    std::string const before = field.text.substr(0, caret(field));
    size_in_faces(font, before.c_str(), &field.caret_x, nullptr);
}
