// All neighbouring pairs of backups: a cell for each, by how far its comparison is. The page keys go to the
// next pair in another state.
//
// Main thread only. The view model outlives the item.

#pragma once

#include "Tallyglass/Controls/Charts/CellStrip.h"
#include "Tallyglass/Screens/Compare/BackfillViewModel.h"

#include <QtQml/qqmlregistration.h>

#include <QPointer>
#include <QString>
#include <optional>

namespace tallyglass {

class PairStrip : public tallyglass::CellStrip {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tallyglass::BackfillViewModel* viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged REQUIRED)

public:
    using CellStrip::CellStrip;

    [[nodiscard]] BackfillViewModel* viewModel() const { return m_viewModel; }
    void setViewModel(BackfillViewModel* viewModel);

signals:
    void viewModelChanged();

protected:
    [[nodiscard]] std::size_t count() const override;
    [[nodiscard]] std::optional<std::size_t> selected() const override;
    void select(std::size_t pair) override;
    [[nodiscard]] QString textOf(std::size_t pair) const override;
    [[nodiscard]] bool areAlike(std::size_t first, std::size_t second) const override;
    void paintCell(QPainter& painter, const QRectF& box, std::size_t first, std::size_t end) const override;

private:
    QPointer<BackfillViewModel> m_viewModel;
};

} // namespace tallyglass
