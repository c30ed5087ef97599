// What the platform holds for one application object. It comes with the application and goes with it, while
// the connection to the window system still stands, so that every run in a process begins anew.
#pragma once

#include "busy.h"
#include "hot_plug.h"
#include "keyboard.h"
#include "pointer.h"
#include "repaint_gate.h"
#include "stop.h"

namespace pbe {

struct Application
{
    // Null without a QApplication.
    static Application *Current();

    StopWatch stop;
    RepaintGate repaint;
    Pointer pointer;
    Keyboard keyboard;
    Busy busy;
    HotPlug hotPlug;
};

} // namespace pbe
