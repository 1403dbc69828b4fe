#include "TallyglassKit/Platform/Processes/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace tallyglass {

bool standardErrorIsTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

std::size_t standardErrorWidth() {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

} // namespace tallyglass
