#pragma once

// Many races of two computer drivers on one track, each begun a little differently: a track on
// which a driver loses its way now and then shows it here, not in a single race.

#include "world/geometry.h"
#include "world/track.h"

#include <vector>

struct RaceStatistics {
    int drivers = 0;
    std::vector<Vec2> turned_at; // cells: how far drivers came that then drove back
    int incomplete = 0;          // drivers that did not come home in time
    double longest_stand = 0.0;  // simulated seconds in which a driver did not get away
    Vec2 stood_at;               // cells: where that was
    std::vector<double> laps;    // seconds, sorted
};

// Races of `laps` laps with bumping cars. Hands the track back.
Track race_often(Track track, int races, int laps, RaceStatistics& statistics);
