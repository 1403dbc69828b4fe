#include "Tallyglass/Screens/Shell/ShellViewModel.h"

namespace tallyglass {

void ShellViewModel::update() {
    m_content = shellContent(model()->health(), model()->fdaStatus());
}

} // namespace tallyglass
