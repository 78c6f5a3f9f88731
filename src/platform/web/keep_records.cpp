#include "platform/keep_records.h"

#include <emscripten.h>

EM_JS(void, keep_in_browser, (), { Module.keepRecords(); });

void keep_records() {
    keep_in_browser();
}
