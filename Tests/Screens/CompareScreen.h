// The real compare screen over a scripted machine, off screen.
//
// Main thread only. Needs Tests/Support/QtMain.

#pragma once

#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Desktop/Pasteboard.h"
#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/HelperSetup.h"
#include "Tallyglass/Screens/CompareState.h"
#include "Tests/Screens/QmlScreen.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/Models/ScriptedMachine.h"

namespace tallyglass::test {

class RecordedPasteboard : public Pasteboard {
public:
    void setText(const QString& copied) override { text = copied; }
    QString text;
};

/// What is around the screen.
struct CompareStage {
    CompareStage();

    ScriptedMachine machine;
    FakeWorkspace workspace;
    RecordedPasteboard pasteboard;
    Alerts alerts;
    AppModel model;
    HelperSetup helperSetup;
};

class CompareScreen : public QmlScreen {
public:
    explicit CompareScreen(CompareStage& stage, QSize size = {900, 720});

    [[nodiscard]] CompareState& state() const { return *m_state; }
    [[nodiscard]] DiffModel& diff() const { return *m_state->diff(); }
    /// The list of changes.
    [[nodiscard]] QQuickItem& list() const;
    [[nodiscard]] QQuickItem& page() const;
    /// Where a row's top edge is in the window.
    [[nodiscard]] double placeOf(int row) const;

    /// Compares two backups of which the newer one has files of these names, in their order, in "/Users".
    void showResult(const std::vector<std::string>& names);
    /// Waits until the screen has caught up with its model and is laid out.
    void settle();

private:
    ScriptedMachine& m_machine;
    CompareState* m_state;
};

} // namespace tallyglass::test
