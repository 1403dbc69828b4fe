#include "TallyglassKit/Platform/Deadline.h"

#include <condition_variable>
#include <mutex>

namespace tallyglass {

Deadline::Deadline(std::chrono::milliseconds limit, const std::stop_token& stop)
    : m_onStop(stop, [this] { m_source.request_stop(); }),
      m_timer([this, limit](const std::stop_token& ended) {
          std::mutex mutex;
          std::condition_variable_any never;
          std::unique_lock lock(mutex);
          never.wait_for(lock, ended, limit, [] { return false; });
          if (!ended.stop_requested())
              m_source.request_stop();
      }) {}

} // namespace tallyglass
