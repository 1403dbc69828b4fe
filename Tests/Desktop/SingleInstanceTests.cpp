#include "Tallyglass/Desktop/SingleInstance.h"
#include "Tallyglass/Desktop/StartMessage.h"
#include "Tests/Support/QtMain/EventLoop.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <atomic>
#include <thread>

namespace tallyglass {
namespace {

using testing::ElementsAre;

class SingleInstanceTest : public testing::Test {
protected:
    [[nodiscard]] QString socketPath() const {
        return QString::fromStdString((m_folder / "socket").string());
    }

    /// A start in another process, as far as locks and sockets can tell: what it finds.
    bool startElsewhere(const QStringList& arguments) {
        std::atomic<bool> ended = false;
        bool isFirst = false;
        std::thread other([&] {
            isFirst = SingleInstance(socketPath()).claim(arguments);
            ended = true;
        });
        test::waitUntil([&] { return ended.load(); });
        other.join();
        return isFirst;
    }

    test::TemporaryFolder m_folder;
};

TEST_F(SingleInstanceTest, givesTheArgumentsOfALaterStartToTheFirst) {
    SingleInstance first(socketPath());
    QStringList arguments;
    QObject::connect(&first, &SingleInstance::reopened, [&](const QStringList& given) { arguments = given; });
    ASSERT_TRUE(first.claim({}));

    EXPECT_FALSE(startElsewhere({"--section", "", "Zürich \U0001F512"}));
    test::waitUntil([&] { return !arguments.isEmpty(); });
    EXPECT_EQ(arguments, QStringList({"--section", "", "Zürich \U0001F512"}));
}

TEST_F(SingleInstanceTest, isHeardByItsUserAlone) {
    SingleInstance first(socketPath());
    ASSERT_TRUE(first.claim({}));

    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(socketPath()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_EQ(::stat(QFile::encodeName(socketPath() + ".lock").constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 077, 0u);
}

TEST_F(SingleInstanceTest, isFirstAgainWhenTheFirstHasEnded) {
    {
        SingleInstance first(socketPath());
        ASSERT_TRUE(first.claim({}));
    }
    EXPECT_TRUE(SingleInstance(socketPath()).claim({}));
}

TEST_F(SingleInstanceTest, takesThePlaceOfACrashedProgram) {
    const QByteArray path = QFile::encodeName(socketPath());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int abandoned = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(::bind(abandoned, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(abandoned);
    m_folder.write("socket.lock", "");

    SingleInstance next(socketPath());
    EXPECT_TRUE(next.claim({}));
    EXPECT_FALSE(startElsewhere({}));
}

TEST_F(SingleInstanceTest, leavesOneOfManyThatStartTogether) {
    constexpr int starts = 8;
    std::atomic<int> firsts = 0;
    std::atomic<int> handedOver = 0;
    std::atomic<bool> done = false;
    std::vector<std::unique_ptr<QThread>> threads;
    for (int start = 0; start < starts; ++start)
        threads.emplace_back(QThread::create([&] {
            SingleInstance instance(socketPath());
            if (!instance.claim({})) {
                ++handedOver;
                return;
            }
            ++firsts;
            while (!done)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }));
    for (auto& thread : threads)
        thread->start();

    test::waitUntil([&] { return firsts + handedOver == starts; });
    done = true;
    for (auto& thread : threads)
        thread->wait();

    EXPECT_EQ(firsts, 1);
    EXPECT_EQ(handedOver, starts - 1);
}

TEST_F(SingleInstanceTest, hangsUpOnACallerThatTalksNonsenseAndServesTheNext) {
    SingleInstance first(socketPath());
    QSignalSpy reopened(&first, &SingleInstance::reopened);
    ASSERT_TRUE(first.claim({}));

    QLocalSocket caller;
    caller.connectToServer(socketPath());
    ASSERT_TRUE(caller.waitForConnected());
    caller.write("\xFF\xFF\xFF\xFF and more");
    test::waitUntil([&] { return caller.state() == QLocalSocket::UnconnectedState; });
    EXPECT_EQ(reopened.count(), 0);

    EXPECT_FALSE(startElsewhere({"a"}));
    test::waitUntil([&] { return reopened.count() == 1; });
}

TEST_F(SingleInstanceTest, runsAloneWhereNoLockCanStand) {
    EXPECT_TRUE(SingleInstance("/nowhere/at/all").claim({}));
    EXPECT_TRUE(SingleInstance(QString()).claim({}));
}

TEST_F(SingleInstanceTest, standsWhereNobodyElseCouldPutASocket) {
    const QByteArray runtimeFolder = qgetenv("XDG_RUNTIME_DIR");
    const QByteArray temporaryFolder = qgetenv("TMPDIR");
    const auto folder = m_folder.write("run/x", "").parent_path();
    const auto mode = [&](std::filesystem::perms permissions) {
        std::filesystem::permissions(folder, permissions);
    };
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder.string()));
    qputenv("TMPDIR", QByteArray::fromStdString(m_folder.path().string()));
    const auto path = [] { return SingleInstance::standardSocketPath().toStdString(); };
    const auto ownFolder = m_folder / fmt::format("tallyglass-{}", ::getuid());

    mode(std::filesystem::perms::owner_all);
    EXPECT_EQ(path(), folder / "tallyglass.socket");
    mode(std::filesystem::perms::all);
    EXPECT_EQ(path(), ownFolder / "tallyglass.socket");
    std::filesystem::permissions(ownFolder, std::filesystem::perms::all);
    EXPECT_EQ(path(), "");
    std::filesystem::remove(ownFolder);
    std::filesystem::create_directory_symlink(folder, ownFolder);
    EXPECT_EQ(path(), "");

    runtimeFolder.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", runtimeFolder);
    temporaryFolder.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", temporaryFolder);
}

TEST(StartMessage, comesBackWhole) {
    const StartMessage message{"token", {"", "a", "ä\U0001F512", ""}};
    StartMessage read;
    EXPECT_EQ(StartMessage::read(message.encoded(), read), StartMessage::Reading::complete);
    EXPECT_EQ(read, message);

    const StartMessage empty;
    EXPECT_EQ(StartMessage::read(empty.encoded(), read), StartMessage::Reading::complete);
    EXPECT_EQ(read, empty);
}

TEST(StartMessage, isAwaitedToItsLastByte) {
    const QByteArray bytes = StartMessage{"token", {"a", "b"}}.encoded();
    StartMessage read;
    for (qsizetype size = 0; size < bytes.size(); ++size)
        EXPECT_EQ(StartMessage::read(bytes.first(size), read), StartMessage::Reading::incomplete) << size;
}

TEST(StartMessage, isRefusedWhenItIsTooLongOrUnended) {
    StartMessage read;
    const auto reading = [&](const QByteArray& bytes) { return StartMessage::read(bytes, read); };

    EXPECT_EQ(reading(QByteArray::fromHex("7FFFFFFF")), StartMessage::Reading::malformed);
    EXPECT_EQ(reading(QByteArray::fromHex("00000000")), StartMessage::Reading::malformed);
    EXPECT_EQ(reading(QByteArray::fromHex("0000000261 62")), StartMessage::Reading::malformed);
    EXPECT_EQ(reading(StartMessage().encoded() + "x"), StartMessage::Reading::malformed);
}

TEST(StartMessage, leavesOutArgumentsThatGoBeyondItsSize) {
    const StartMessage message{"", {"a", QString(StartMessage::largestSize, 'x'), "b"}};
    StartMessage read;

    EXPECT_EQ(StartMessage::read(message.encoded(), read), StartMessage::Reading::complete);
    EXPECT_EQ(read.arguments, QStringList({"a"}));
}

} // namespace
} // namespace tallyglass
