// Has a model read the machine of its environment, as the window does when it starts. Main thread only.

#pragma once

#include "Tallyglass/Models/AppModel.h"
#include "Tests/Support/QtMain/EventLoop.h"

namespace tallyglass::test {

/// Returns when everything has been read.
inline void readMachine(AppModel& model) {
    bool ended = false;
    model.refresh([&ended] { ended = true; });
    waitUntil([&] { return ended; });
}

} // namespace tallyglass::test
