// The desktop program as a whole: reads its arguments, makes the application object and runs until it is
// quit.

#pragma once

namespace tallyglass {

struct Application {
    /// Returns the program's exit status: 2 for arguments that make no sense, 1 when it can't do what it was
    /// asked for.
    [[nodiscard]] static int run(int& argc, char** argv);
};

} // namespace tallyglass
