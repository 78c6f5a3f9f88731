#pragma once

// For tests that write records: they begin and end with an empty preference folder.

#include "records/best_laps.h"
#include "records/replace_file.h"

#include <gtest/gtest.h>

#include <filesystem>

struct RecordsTest : testing::Test {
    RecordsTest() { empty_folder(); }
    ~RecordsTest() override { empty_folder(); }

    void empty_folder() const {
        for (auto const& entry : std::filesystem::directory_iterator(folder)) {
            std::filesystem::remove_all(entry);
        }
        flush_replaced_files(); // nothing is left to be flushed
    }

    std::filesystem::path const folder = pref_path("");
};
