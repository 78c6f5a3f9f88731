#include "track_compiler/scenery_words.h"

#include <array>

namespace {

constexpr std::array<KindWord, 23> KINDS{{
    {"tree", SceneryKind::tree, true},
    {"pine", SceneryKind::pine, true},
    {"palm", SceneryKind::palm, true},
    {"bush", SceneryKind::bush, true},
    {"cactus", SceneryKind::cactus, true},
    {"rock", SceneryKind::rock, true},
    {"lamp", SceneryKind::lamp, true},
    {"fountain", SceneryKind::fountain, true},
    {"lighthouse", SceneryKind::lighthouse, true},
    {"tyres", SceneryKind::tyres, false},
    {"house", SceneryKind::house, false},
    {"shed", SceneryKind::shed, false},
    {"stand", SceneryKind::stand, false},
    {"container", SceneryKind::container, false},
    {"boat", SceneryKind::boat, false},
    {"hay", SceneryKind::hay, false},
    {"car", SceneryKind::car, false},
    {"tent", SceneryKind::tent, false},
    {"crane", SceneryKind::crane, false},
    {"pier", SceneryKind::pier, false},
    {"digger", SceneryKind::digger, false},
    {"logs", SceneryKind::logs, false},
    {"board", SceneryKind::board, false},
}};

} // namespace

KindWord const* find_kind(std::string_view word) {
    for (KindWord const& entry : KINDS) {
        if (entry.word == word) return &entry;
    }
    return nullptr;
}
