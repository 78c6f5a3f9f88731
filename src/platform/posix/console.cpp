#include "platform/console.h"

void join_console() {} // joined from birth
