// The backups in which the traced item is: a cell for each, coloured by the version that it holds, or hollow.
// The page keys walk the versions.
//
// Main thread only. The view model outlives the item.

#pragma once

#include "Tallyglass/Controls/Charts/CellStrip.h"
#include "Tallyglass/Screens/FileHistory/FileHistoryViewModel.h"

#include <QtQml/qqmlregistration.h>

#include <QPointer>
#include <QString>
#include <optional>

namespace tallyglass {

class PresenceStrip : public tallyglass::CellStrip {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tallyglass::FileHistoryViewModel* viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged REQUIRED)

public:
    using CellStrip::CellStrip;

    [[nodiscard]] FileHistoryViewModel* viewModel() const { return m_viewModel; }
    void setViewModel(FileHistoryViewModel* viewModel);

signals:
    void viewModelChanged();

protected:
    [[nodiscard]] std::size_t count() const override;
    [[nodiscard]] std::optional<std::size_t> selected() const override;
    void select(std::size_t backup) override;
    [[nodiscard]] QString textOf(std::size_t backup) const override;
    [[nodiscard]] bool areAlike(std::size_t first, std::size_t second) const override;
    void paintCell(QPainter& painter, const QRectF& box, std::size_t first, std::size_t end) const override;

private:
    QPointer<FileHistoryViewModel> m_viewModel;
};

} // namespace tallyglass
