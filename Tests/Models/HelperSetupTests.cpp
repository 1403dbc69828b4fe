#include "Tallyglass/Desktop/Alerts.h"
#include "Tallyglass/Models/HelperSetup.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/QtMain/EventLoop.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QSignalSpy>

namespace tallyglass {
namespace {

using testing::ElementsAre;

constexpr auto settingsPane = "open x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";

class HelperSetupTest : public testing::Test {
protected:
    [[nodiscard]] SystemPaths paths() const { return SystemPaths(m_folder.path()); }
    [[nodiscard]] std::string path(std::string_view name) const { return paths().path(name); }

    void writeProgram(std::string_view name, const std::string& script) const {
        const auto program = m_folder.write(name.substr(1), fmt::format("#!/bin/sh\n{}", script));
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    void installHelper() const { writeProgram(HelperRemoval::helperPath, ""); }

    /// The alert that ends a removal which the user confirmed.
    Alert alertAfterRemoval(HelperSetup& setup) {
        setup.confirmAndUninstall();
        m_alerts.answer(true);
        test::waitUntil([&] { return m_alerts.isShowing(); });
        const Alert alert = m_alerts.current();
        m_alerts.answer(true);
        return alert;
    }

    test::TemporaryFolder m_folder;
    test::FakeWorkspace m_workspace;
    Alerts m_alerts;
};

TEST_F(HelperSetupTest, asksBeforeItRemovesAndTakesNoForAnAnswer) {
    writeProgram(HelperRemoval::osascriptPath, "touch \"$0.ran\"\n");
    HelperSetup setup(paths(), m_workspace, m_alerts);

    setup.confirmAndUninstall();
    setup.confirmAndUninstall();
    EXPECT_EQ(
        m_alerts.current(),
        (Alert{.kind = Alert::Kind::warning,
               .title = "Remove Tallyglass’s helper?",
               .text =
                   "This unloads and deletes the privileged background helper and the files it installed. "
                   "You’ll be asked for your administrator password, and per-backup sizes will stop "
                   "working unless you reinstall.\n\nAfterward, quit and drag Tallyglass to the Trash to "
                   "finish.",
               .confirmText = "Remove Helper…",
               .cancelText = "Cancel"}));
    m_alerts.answer(false);

    EXPECT_FALSE(m_alerts.isShowing());
    EXPECT_FALSE(std::filesystem::exists(path(HelperRemoval::osascriptPath) + ".ran"));
    setup.confirmAndUninstall();
    EXPECT_TRUE(m_alerts.isShowing());
}

TEST_F(HelperSetupTest, removesTheHelperAndSaysSo) {
    // As osascript does, the stand-in runs the command between the quotes.
    writeProgram(HelperRemoval::osascriptPath,
                 "[ \"$1\" = -e ] || exit 1\n"
                 "command=${2#'do shell script \"'}; command=${command%'\" with administrator privileges'}\n"
                 "eval \"$command\"\n");
    installHelper();
    m_folder.write("Library/Application Support/Tallyglass/refresh", "now");
    HelperSetup setup(paths(), m_workspace, m_alerts);
    QSignalSpy changed(&setup, &HelperSetup::helperExistsChanged);
    ASSERT_TRUE(setup.helperExists());

    const Alert alert = alertAfterRemoval(setup);
    EXPECT_EQ(alert,
              (Alert{.title = "Helper removed",
                     .text = "The background helper and its files are gone. Quit Tallyglass and drag it from "
                             "your Applications folder to the Trash to finish removing it."}));
    EXPECT_EQ(alert.confirmLabel(), "OK");
    EXPECT_FALSE(setup.helperExists());
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(std::filesystem::exists(path(HelperRemoval::supportFolder)));
}

TEST_F(HelperSetupTest, endsSilentlyWhenThePasswordIsDeclined) {
    writeProgram(HelperRemoval::osascriptPath,
                 "echo 'execution error: User canceled. (-128)' >&2; touch \"$0.ran\"; exit 1\n");
    HelperSetup setup(paths(), m_workspace, m_alerts);

    setup.confirmAndUninstall();
    m_alerts.answer(true);
    test::waitUntil([&] { return std::filesystem::exists(path(HelperRemoval::osascriptPath) + ".ran"); });
    test::waitUntil([&] { // it can be asked for again only when it has ended
        setup.confirmAndUninstall();
        return m_alerts.isShowing();
    });

    EXPECT_EQ(m_alerts.current().title, "Remove Tallyglass’s helper?");
}

TEST_F(HelperSetupTest, saysWhyItCouldNotRemove) {
    HelperSetup setup(paths(), m_workspace, m_alerts);
    const Alert withoutOsascript = alertAfterRemoval(setup);
    EXPECT_TRUE(withoutOsascript.isWarning());
    EXPECT_EQ(withoutOsascript.title, "Couldn’t remove the helper");
    EXPECT_EQ(withoutOsascript.text, "No such file or directory");

    writeProgram(HelperRemoval::osascriptPath, "printf '\\n  it is “stuck”  \\n' >&2; exit 3\n");
    EXPECT_EQ(alertAfterRemoval(setup).text, "it is “stuck”");
    writeProgram(HelperRemoval::osascriptPath, "kill -9 $$\n");
    EXPECT_EQ(alertAfterRemoval(setup).title, "Couldn’t remove the helper");
}

TEST_F(HelperSetupTest, stopsItsChildWhenItGoesAway) {
    writeProgram(HelperRemoval::osascriptPath, "touch \"$0.ran\"; exec sleep 1000\n");
    {
        HelperSetup setup(paths(), m_workspace, m_alerts);
        setup.confirmAndUninstall();
        m_alerts.answer(true);
        test::waitUntil([&] { return std::filesystem::exists(path(HelperRemoval::osascriptPath) + ".ran"); });
    }
    EXPECT_FALSE(m_alerts.isShowing()); // and the process ends, for which the pool waits
}

TEST_F(HelperSetupTest, opensTheSettingsAndRevealsAHelperThatExists) {
    HelperSetup setup(paths(), m_workspace, m_alerts);

    setup.openFullDiskAccessAndReveal();
    EXPECT_THAT(m_workspace.requests, ElementsAre(settingsPane));
    installHelper();
    setup.openFullDiskAccessAndReveal();
    EXPECT_THAT(m_workspace.requests,
                ElementsAre(settingsPane, settingsPane, "reveal " + path(HelperRemoval::helperPath)));
}

TEST_F(HelperSetupTest, looksForTheHelperWhenTheProgramBecomesActive) {
    HelperSetup setup(paths(), m_workspace, m_alerts);
    QSignalSpy changed(&setup, &HelperSetup::helperExistsChanged);

    installHelper();
    EXPECT_FALSE(setup.helperExists());
    emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_TRUE(setup.helperExists());
    emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(HelperSetupTest, asksForAnExportByWritingTheMoment) {
    const auto trigger =
        m_folder.write(HelperRemoval::triggerPath.substr(1), "something longer that was there before");
    HelperSetup setup(paths(), m_workspace, m_alerts, [] { return dateSince1970(1'763'840'280.5); });

    setup.requestHelperRun();

    test::waitUntil([&] { return readFile(trigger.string()).view() == "2025-11-22T19:38:00.500Z"; });
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(trigger.parent_path()), {}), 1);
}

TEST_F(HelperSetupTest, asksForNothingWithoutASupportFolder) {
    HelperSetup setup(paths(), m_workspace, m_alerts);
    setup.requestHelperRun();
    // The same request where it can succeed comes after it.
    const test::TemporaryFolder other;
    const auto trigger = other.write(HelperRemoval::triggerPath.substr(1), "");
    HelperSetup(SystemPaths(other.path()), m_workspace, m_alerts).requestHelperRun();
    test::waitUntil([&] { return !readFile(trigger.string()).empty(); });

    EXPECT_FALSE(std::filesystem::exists(path(HelperRemoval::supportFolder)));
    EXPECT_FALSE(m_alerts.isShowing());
}

} // namespace
} // namespace tallyglass
