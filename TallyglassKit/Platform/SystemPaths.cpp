#include "TallyglassKit/Platform/SystemPaths.h"

namespace tallyglass {

SystemPaths::SystemPaths(const std::filesystem::path& root)
    : m_root(std::filesystem::absolute(root).lexically_normal()) {
    if (!m_root.has_filename() && m_root.has_relative_path())
        m_root = m_root.parent_path(); // a trailing slash would be doubled in path()
}

std::string SystemPaths::path(std::string_view absolute) const {
    if (m_root == m_root.root_path())
        return std::string(absolute);
    return m_root.string().append(absolute);
}

} // namespace tallyglass
