#include "Tallyglass/Screens/ShellView.h"

#include "Tallyglass/Models/AppModel.h"

namespace tallyglass {

ShellView::ShellView(QObject* parent) : ModelView(parent) {
    for (const Section& section : tallyglass::sections())
        m_sections.append(QVariant::fromValue(section));
}

void ShellView::setSectionIndex(int index) {
    if (index == m_sectionIndex || index < 0 || index >= m_sections.size())
        return;
    m_sectionIndex = index;
    emit sectionIndexChanged();
}

void ShellView::update() {
    const ShellContent content = shellContent(model()->health(), model()->fdaStatus());
    if (content == m_content)
        return;
    m_content = content;
    emit contentChanged();
}

} // namespace tallyglass
