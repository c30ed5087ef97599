// SPDX-License-Identifier: Apache-2.0
// What the platform holds for one application object. It comes with the application and goes with it, while
// the connection to the window system still stands, so that every run in a process begins anew.
#pragma once

#include "platform/screen/busy.h"
#include "platform/devices/hot_plug.h"
#include "platform/input/keyboard.h"
#include "platform/input/type_ahead.h"
#include "platform/screen/pointer.h"
#include "platform/screen/repaint_gate.h"
#include "platform/stop.h"
#include "platform/watch.h"

namespace pbe {

struct Application
{
    // Null without a QApplication.
    static Application *Current();

    StopWatch stop;
    RepaintGate repaint;
    Pointer pointer;
    TypeAhead typeAhead;
    Keyboard keyboard{typeAhead};
    Busy busy;
    HotPlug hotPlug;
    HostWatch hostWatch;
};

} // namespace pbe
