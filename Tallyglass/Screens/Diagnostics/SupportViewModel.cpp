#include "Tallyglass/Screens/Diagnostics/SupportViewModel.h"

#include <QUrl>

namespace tallyglass {

void SupportViewModel::setWorkspace(Workspace* workspace) {
    if (workspace == m_workspace)
        return;
    m_workspace = workspace;
    emit workspaceChanged();
}

void SupportViewModel::setLink(const QString& link) {
    if (link == m_link)
        return;
    m_link = link;
    emit linkChanged();
}

QString SupportViewModel::hint() const {
    return Support::isSet(m_link) ? tr("Opens a secure Stripe checkout in your browser")
                                  : tr("Set your Stripe Payment Link in Support");
}

void SupportViewModel::open() {
    if (m_workspace && Support::isSet(m_link))
        m_workspace->openUrl(QUrl(m_link));
}

} // namespace tallyglass
