#include "TallyglassKit/Access/RateWindow.h"

#include "TallyglassKit/Access/BackupStatus.h"

#include <algorithm>

namespace tallyglass {
namespace {

/// In doubles, since an integer difference could overflow.
double perSecond(std::int64_t now, std::int64_t before, double span) {
    return std::max(0.0, (static_cast<double>(now) - static_cast<double>(before)) / span);
}

} // namespace

void RateWindow::take(const BackupStatus& status, Date now) {
    if (!status.isRunning || status.bytesCopied.value_or(0) < 1) {
        m_samples.clear();
        m_rate.reset();
        return;
    }
    const Sample latest{now, *status.bytesCopied, status.filesCopied.value_or(0)};
    m_samples.push_back(latest);
    std::erase_if(m_samples, [&](const Sample& sample) { return (now - sample.date).count() > length; });
    if (m_samples.size() < 2) {
        m_rate.reset();
        return;
    }
    const Sample& first = m_samples.front();
    const double span = (now - first.date).count();
    if (span < shortestSpan)
        return;
    m_rate = BackupRate{.bytesPerSecond = perSecond(latest.bytes, first.bytes, span),
                        .filesPerSecond = perSecond(latest.files, first.files, span)};
}

} // namespace tallyglass
