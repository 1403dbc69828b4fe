#include "Tallyglass/Screens/Compare/PairStrip.h"

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <span>

namespace tallyglass {

namespace {

using State = AdjacentPair::State;

/// Of several pairs, a cell shows the state that comes first here.
constexpr std::array byImportance{State::failed, State::running, State::missing, State::ready};

State stateOf(std::span<const AdjacentPair> pairs) {
    return *std::ranges::find_if(byImportance, [&](State state) {
        return std::ranges::find(pairs, state, &AdjacentPair::state) != pairs.end();
    });
}

} // namespace

void PairStrip::setViewModel(BackfillViewModel* viewModel) {
    if (viewModel == m_viewModel)
        return;
    if (m_viewModel)
        m_viewModel->disconnect(this);
    m_viewModel = viewModel;
    if (m_viewModel) {
        connect(m_viewModel, &BackfillViewModel::pairsChanged, this, &PairStrip::takeItems);
        connect(m_viewModel, &BackfillViewModel::selectedPairChanged, this, &PairStrip::takeSelection);
    }
    takeItems();
    emit viewModelChanged();
}

std::size_t PairStrip::count() const {
    return m_viewModel ? m_viewModel->pairs().size() : 0;
}

std::optional<std::size_t> PairStrip::selected() const {
    return m_viewModel ? m_viewModel->selectedPair() : std::nullopt;
}

void PairStrip::select(std::size_t pair) {
    m_viewModel->selectPair(pair);
}

QString PairStrip::textOf(std::size_t pair) const {
    return pairText(m_viewModel->pairs()[pair]);
}

bool PairStrip::areAlike(std::size_t first, std::size_t second) const {
    return m_viewModel->pairs()[first].state == m_viewModel->pairs()[second].state;
}

/// Each state has a shape of its own beside its colour: full, hollow, or half full at the top or the bottom.
void PairStrip::paintCell(QPainter& painter, const QRectF& box, std::size_t first, std::size_t end) const {
    const State state = stateOf(std::span(m_viewModel->pairs()).subspan(first, end - first));
    const QColor color = state == State::failed    ? theme().critical()
                         : state == State::missing ? theme().secondaryText()
                                                   : theme().accent();
    const double radius = cornerRadius(box);
    if (state != State::ready) {
        painter.setPen(QPen(color, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
    if (state == State::missing)
        return;
    const double half = box.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(
        box.adjusted(0, state == State::running ? half : 0, 0, state == State::failed ? -half : 0), radius,
        radius);
}

} // namespace tallyglass
