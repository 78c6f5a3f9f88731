#pragma once

// One player's best laps as a PDF, built from the files on disk alone.

#include <string>

// True if the report was written; else one line on standard error says why not.
bool write_highscore_pdf(std::string const& name, std::string const& path);
