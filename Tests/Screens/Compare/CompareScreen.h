// The real compare screen over a scripted machine, off screen.
//
// Main thread only. Needs Tests/Support/QtMain.

#pragma once

#include "Tallyglass/Screens/Compare/CompareViewModel.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Screens/ScreenStage.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/Models/ScriptedMachine.h"

namespace tallyglass::test {

/// The machine has to be there first.
struct ComparedMachine {
    ScriptedMachine machine;
};

/// What is around the screen.
struct CompareStage : ComparedMachine, ScreenStage {
    CompareStage();
};

class CompareScreen : public QmlScreen {
public:
    explicit CompareScreen(CompareStage& stage, QSize size = {900, 720});

    [[nodiscard]] CompareViewModel& viewModel() const { return *m_viewModel; }
    [[nodiscard]] DiffModel& diff() const { return *m_viewModel->diff(); }
    /// The list of changes.
    [[nodiscard]] QQuickItem& list() const;
    /// Scrolls the list until a row is the topmost.
    void scrollTo(int row);
    /// The box of a row in the window. Requires: the row is in view.
    [[nodiscard]] QRectF boxOf(int row) const;

    /// Compares two backups of which the newer one has files of these names, in their order, in "/Users".
    void showResult(const std::vector<std::string>& names);
    /// Waits until the screen has caught up with its model and is laid out.
    void settle();

private:
    ScriptedMachine& m_machine;
    CompareViewModel* m_viewModel;
};

} // namespace tallyglass::test
