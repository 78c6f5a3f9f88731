#include "platform/console.h"

void join_console() {} // joined from birth

std::vector<std::string> words_of_call(int argc, char** argv) {
    return {argv + 1, argv + argc};
}
