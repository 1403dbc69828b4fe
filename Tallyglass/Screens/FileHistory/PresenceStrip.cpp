#include "Tallyglass/Screens/FileHistory/PresenceStrip.h"

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QPainter>
#include <span>

namespace tallyglass {

void PresenceStrip::setViewModel(FileHistoryViewModel* viewModel) {
    if (viewModel == m_viewModel)
        return;
    if (m_viewModel)
        m_viewModel->disconnect(this);
    m_viewModel = viewModel;
    if (m_viewModel) {
        connect(m_viewModel, &FileHistoryViewModel::presenceChanged, this, &PresenceStrip::takeItems);
        connect(m_viewModel, &FileHistoryViewModel::selectedBackupChanged, this,
                &PresenceStrip::takeSelection);
    }
    takeItems();
    emit viewModelChanged();
}

std::size_t PresenceStrip::count() const {
    return m_viewModel ? m_viewModel->presence().size() : 0;
}

std::optional<std::size_t> PresenceStrip::selected() const {
    return m_viewModel ? m_viewModel->selectedBackup() : std::nullopt;
}

void PresenceStrip::select(std::size_t backup) {
    m_viewModel->selectBackup(backup);
}

QString PresenceStrip::textOf(std::size_t backup) const {
    return m_viewModel->backupText(backup);
}

bool PresenceStrip::areAlike(std::size_t first, std::size_t second) const {
    return m_viewModel->presence()[first] == m_viewModel->presence()[second];
}

void PresenceStrip::paintCell(QPainter& painter, const QRectF& box, std::size_t first,
                              std::size_t end) const {
    const auto cell = PresenceCell::of(std::span(m_viewModel->presence()).subspan(first, end - first));
    const double radius = cornerRadius(box);
    if (cell.hasMissing) {
        painter.setPen(QPen(theme().secondaryText(), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
    if (!cell.version)
        return;
    const QList<QColor> colors = theme().seriesColors();
    const auto newest = static_cast<std::size_t>(m_viewModel->rows()->count()) - 1; // of the versions
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors[static_cast<qsizetype>(newest - *cell.version) % colors.size()]);
    // Half full where the item is missing in some of its backups.
    painter.drawRoundedRect(cell.hasMissing ? box.adjusted(0, box.height() / 2, 0, 0) : box, radius, radius);
}

} // namespace tallyglass
