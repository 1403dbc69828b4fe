#include "Tallyglass/Models/ContinuousTimer.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/ErrorText.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <ctime>

namespace tallyglass {

ContinuousTimer::ContinuousTimer() : m_fd(timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {
    if (m_fd < 0)
        throw Error("Could not make a timer: " + errorText(errno));
    m_notifier = std::make_unique<QSocketNotifier>(m_fd, QSocketNotifier::Read);
    m_notifier->setEnabled(false);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &ContinuousTimer::fire);
}

ContinuousTimer::~ContinuousTimer() {
    m_notifier.reset();
    ::close(m_fd);
}

void ContinuousTimer::start(double seconds) {
    // A value of zero would disarm it.
    const double whole = std::floor(std::max(seconds, 0.0));
    const double rest = std::max(seconds, 0.0) - whole;
    itimerspec setting{};
    setting.it_value.tv_sec = static_cast<std::time_t>(whole);
    setting.it_value.tv_nsec = std::clamp(std::lround(rest * 1e9), whole > 0 ? 0L : 1L, 999'999'999L);
    timerfd_settime(m_fd, 0, &setting, nullptr);
    m_notifier->setEnabled(true);
}

void ContinuousTimer::stop() {
    const itimerspec none{};
    timerfd_settime(m_fd, 0, &none, nullptr);
    m_notifier->setEnabled(false);
}

void ContinuousTimer::fire() {
    std::uint64_t expirations = 0;
    if (::read(m_fd, &expirations, sizeof expirations) != sizeof expirations)
        return; // it has been restarted since
    m_notifier->setEnabled(false);
    emit timeout();
}

} // namespace tallyglass
