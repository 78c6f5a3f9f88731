#pragma once

// Which sound lies in which slot of Audio.

constexpr int DOOR_SLOT = 0;
constexpr int ENGINE_SLOT = 1;
constexpr int CHIME_SLOT = 2;
constexpr int CROWD_SLOT = 3;
constexpr int FANFARE_SLOT = 4;
