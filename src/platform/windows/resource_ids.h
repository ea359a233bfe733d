#pragma once

// Numbers of the program's icons, for the resource compiler and for those who load them. Explorer
// shows the one with the lowest number.
#define KARVEL_ICON_WINDOW 1
#define KARVEL_ICON_NORMAL 2
#define KARVEL_ICON_FAILURE 3
