// The model over a machine whose backups are real.

#include "Tallyglass/Desktop/FilePanels.h"
#include "Tallyglass/Models/FileHistoryModel.h"
#include "Tests/Support/HostMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QUrl>

namespace tallyglass {
namespace {

using testing::SizeIs;

TEST(LiveFileHistory, getsTheSecondOfThreeVersionsBack) {
    const test::HostMachine machine;
    machine.folder().write("source/notes", "first");
    machine.setUp();
    for (const char* text : {"first", "second!", "third"}) {
        machine.folder().write("source/notes", text);
        machine.backUp();
    }
    Alerts alerts;
    FilePanels panels(alerts);
    FileHistoryModel model(AppEnvironment(SystemPaths(machine.root()), TMUtilRunner(machine.tool())), panels);

    model.setLogicalPath((machine.source() / "notes").string());
    model.scan();
    test::waitUntil([&] { return !model.progress(); });
    ASSERT_THAT(model.spans(), SizeIs(3)) << model.error().value_or("");

    model.exportVersion(model.spans()[1].version);
    const auto destination = machine.folder() / "restored";
    panels.answer({QUrl::fromLocalFile(QString::fromStdString(destination.string()))});
    test::waitUntil([&] { return !model.currentExport(); });
    EXPECT_EQ(model.error(), std::nullopt);
    std::ostringstream restored;
    restored << std::ifstream(destination, std::ios::binary).rdbuf();
    EXPECT_EQ(restored.str(), "second!");
}

} // namespace
} // namespace tallyglass
