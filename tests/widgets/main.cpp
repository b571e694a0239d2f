#include "support/gui_main.h"

TARNWICK_GUI_TEST_MAIN
