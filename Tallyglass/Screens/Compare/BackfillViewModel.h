// The state of the card of all backups, and what its controls do.
//
// Main thread only.

#pragma once

#include "Tallyglass/Models/DiffModel.h"
#include "Tallyglass/Screens/Compare/BackfillContent.h"
#include "Tallyglass/Screens/Context/ViewModel.h"

#include <QProperty>
#include <cstddef>
#include <optional>
#include <vector>

namespace tallyglass {

class BackfillViewModel : public tallyglass::ViewModel {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tallyglass::BackfillContent content READ content NOTIFY contentChanged)

public:
    using ViewModel::ViewModel;

    [[nodiscard]] BackfillContent content() const { return m_content; }

    /// Oldest first.
    [[nodiscard]] const std::vector<AdjacentPair>& pairs() const { return m_pairs; }
    /// The selected one of the pairs.
    [[nodiscard]] std::optional<std::size_t> selectedPair() const { return m_selectedPair; }
    void selectPair(std::size_t pair);

    // The controls. None does anything before the application's models are there.
    Q_INVOKABLE void start();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void setPreparesNewBackups(bool prepares);
    /// Shows the comparison of a pair, which runs first if it isn't ready.
    Q_INVOKABLE void openPair(int pair);

signals:
    void contentChanged();
    void pairsChanged();
    void selectedPairChanged();

protected:
    void update() override;

private:
    using Self = BackfillViewModel;

    void followModel();
    void takePairs();

    DiffModel* m_diff = nullptr;
    std::vector<AdjacentPair> m_pairs;
    std::optional<std::size_t> m_selectedPair;

    Q_OBJECT_BINDABLE_PROPERTY(Self, BackfillContent, m_content, &Self::contentChanged)
};

} // namespace tallyglass
