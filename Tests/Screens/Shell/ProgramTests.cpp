// The program as its users start it, as a child of the test.

#include "Tests/Screens/BrokenModule.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QRegularExpression>

namespace tallyglass {
namespace {

class Program : public testing::Test {
protected:
    test::TemporaryFolder folder;

    /// Over a machine without anything, and apart from programs that run already.
    void start(QProcess& process, const QStringList& arguments) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TALLYGLASS_ROOT", QString::fromStdString(folder.path() / "root"));
        environment.insert("XDG_RUNTIME_DIR", QString::fromStdString(folder.path()));
        environment.remove("DBUS_SESSION_BUS_ADDRESS");
        process.setProcessEnvironment(environment);
        process.start(QString::fromStdString(test::program("tallyglass")), arguments);
    }

    struct Outcome {
        int status;
        QString output;
        QString errors;
    };
    [[nodiscard]] Outcome run(const QStringList& arguments) const {
        QProcess process;
        start(process, arguments);
        EXPECT_TRUE(process.waitForFinished(120'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
};

TEST_F(Program, drawsEveryScreenOfASessionIntoWholePictures) {
    const QString target = QString::fromStdString(folder / "new/pictures");

    const Outcome outcome = run({"--fixture", "fresh", "--screenshots", target});

    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    const QStringList paths = outcome.output.split('\n', Qt::SkipEmptyParts);
    static const QRegularExpression size("-([0-9]+)x([0-9]+)-");
    for (const QString& path : paths) {
        const QImage picture(path);
        const auto match = size.match(path);
        EXPECT_EQ(picture.size(), QSize(match.captured(1).toInt(), match.captured(2).toInt()))
            << qPrintable(path);
    }
    for (const char* name :
         {"fresh-overview-720x560-light", "fresh-overview-900x720-dark", "fresh-compare-1600x1000-light",
          "fresh-history-720x560-light-large-text", "fresh-access-guide-app-900x720-light",
          "fresh-access-guide-helper-900x720-light", "fresh-uninstall-900x720-dark",
          "fresh-update-900x720-dark"})
        EXPECT_TRUE(paths.contains(target + '/' + name + ".png")) << name;
}

TEST_F(Program, saysInOneLineWhyPicturesCantBeWritten) {
    const auto file = folder.write("file", "no folder");

    const Outcome outcome =
        run({"--fixture", "fresh", "--screenshots", QString::fromStdString(file.string() + "/pictures")});

    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors.count('\n'), 1);
    EXPECT_TRUE(outcome.errors.contains("can't be made")) << qPrintable(outcome.errors);
}

TEST_F(Program, saysWhichPartOfQtIsMissingInsteadOfDrawingTheRest) {
    for (const char* module : {"QtQuick.Layouts", "QtQuick.Templates", "QtQml.WorkerScript"}) {
        const test::BrokenModule broken(module);

        const Outcome outcome =
            run({"--fixture", "fresh", "--screenshots", QString::fromStdString(folder / "pictures")});

        EXPECT_EQ(outcome.status, 1) << module;
        EXPECT_EQ(outcome.output, "") << module;
        const QString last = outcome.errors.mid(outcome.errors.lastIndexOf("tallyglass: "));
        EXPECT_TRUE(last.contains(broken.missingPart)) << module << '\n' << qPrintable(outcome.errors);
    }
}

TEST_F(Program, refusesUnknownOptionsAndAnswersWithItsVersion) {
    EXPECT_EQ(run({"--unheard"}).status, 2);
    EXPECT_TRUE(run({"--version"}).output.startsWith("Tallyglass "));
}

TEST_F(Program, startedAgainReachesTheFirstAndEnds) {
    QProcess first;
    start(first, {"--report-start"});
    ASSERT_TRUE(first.waitForReadyRead(60'000)) << first.readAllStandardError().toStdString();
    EXPECT_EQ(first.readAllStandardOutput(), "ready\n");

    const Outcome second = run({});

    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(second.output + second.errors, "");
    EXPECT_EQ(first.state(), QProcess::Running);
    first.terminate();
    EXPECT_TRUE(first.waitForFinished(60'000));
    EXPECT_EQ(first.readAllStandardError(), "");
}

} // namespace
} // namespace tallyglass
