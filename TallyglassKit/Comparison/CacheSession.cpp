#include "TallyglassKit/Comparison/CacheSession.h"

#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Platform/Error.h"

#include <utility>

namespace tallyglass {

CacheSession::CacheSession(TMUtilRunner runner, std::optional<std::filesystem::path> url)
    : m_runner(std::move(runner)), m_url(std::move(url)) {}

CacheSession::Cache& CacheSession::open(const std::stop_token& stop) {
    const std::lock_guard lock(m_mutex);
    if (!m_cache) {
        if (stop.stop_requested())
            throw Cancelled();
        m_cache = std::make_unique<Cache>(m_runner, m_url ? *m_url : TallyglassDatabase::defaultURL());
        m_isOpen = true;
    }
    return *m_cache;
}

LoadedComparison CacheSession::Cache::load(Comparison comparison, const std::stop_token& stop) {
    auto rows =
        m_store.changes(comparison.id, std::nullopt, std::nullopt, LoadedComparison::rowLimit, 0, stop);
    return {std::move(comparison), std::move(rows)};
}

} // namespace tallyglass
