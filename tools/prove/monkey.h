#pragma once

// Does whatever comes to its mind in one frame; after its number of frames it closes the window.
void monkey_frame();
