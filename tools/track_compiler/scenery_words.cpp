#include "track_compiler/scenery_words.h"

#include <array>

namespace {

constexpr std::array<KindWord, 14> KINDS{{
    {"tree", SceneryKind::tree, true},
    {"pine", SceneryKind::pine, true},
    {"palm", SceneryKind::palm, true},
    {"bush", SceneryKind::bush, true},
    {"cactus", SceneryKind::cactus, true},
    {"rock", SceneryKind::rock, true},
    {"lamp", SceneryKind::lamp, true},
    {"tyres", SceneryKind::tyres, false},
    {"house", SceneryKind::house, false},
    {"shed", SceneryKind::shed, false},
    {"stand", SceneryKind::stand, false},
    {"container", SceneryKind::container, false},
    {"boat", SceneryKind::boat, false},
    {"hay", SceneryKind::hay, false},
}};

} // namespace

KindWord const* find_kind(std::string_view word) {
    for (KindWord const& entry : KINDS) {
        if (entry.word == word) return &entry;
    }
    return nullptr;
}
