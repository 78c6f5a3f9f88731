#pragma once

// From now on the process ends with a line on standard error and status 1 when it runs out of
// memory. Records need no farewell: what was being saved is set right at the next start. Only SDL's
// large blocks, pictures' pixels, may still be missing: the game does without that picture.
void end_when_out_of_memory();
