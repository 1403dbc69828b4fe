#include "Tallyglass/Desktop/SingleInstance.h"

#include "Tallyglass/Desktop/StartMessage.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/PrivateFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QThread>
#include <QTimer>

namespace tallyglass {

namespace {

// With this environment variable a desktop lets a program that was just started come to the front.
constexpr const char* activationVariable = "XDG_ACTIVATION_TOKEN";
constexpr char acknowledgement = '\x06';
constexpr std::chrono::seconds callerPatience{5};

int milliseconds(const QDeadlineTimer& deadline) {
    return static_cast<int>(deadline.remainingTime());
}

/// Whether the running program has taken the message.
bool handOver(const QString& socketPath, const QByteArray& message, const QDeadlineTimer& deadline) {
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(milliseconds(deadline)))
        return false;
    socket.write(message);
    while (socket.bytesToWrite() > 0)
        if (!socket.waitForBytesWritten(milliseconds(deadline)))
            return false;
    char answer = 0;
    return (socket.bytesAvailable() > 0 || socket.waitForReadyRead(milliseconds(deadline))) &&
           socket.getChar(&answer) && answer == acknowledgement;
}

bool belongsToThisUserAlone(const QString& folder) {
    struct stat status {};
    return ::lstat(QFile::encodeName(folder).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::getuid() && (status.st_mode & 077) == 0;
}

} // namespace

SingleInstance::SingleInstance(QString socketPath, QObject* parent)
    : QObject(parent), m_socketPath(std::move(socketPath)) {
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::greet);
}

SingleInstance::~SingleInstance() {
    m_server.close(); // before the lock goes: a next first one finds the place cleared
}

QString SingleInstance::standardSocketPath() {
    QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (folder.isEmpty() || !belongsToThisUserAlone(folder)) {
        folder = QDir::tempPath() + QStringLiteral("/tallyglass-%1").arg(::getuid());
        try {
            makePrivateFolder(folder.toStdString());
        } catch (const FileError&) {
            return {};
        }
        if (!belongsToThisUserAlone(folder))
            return {};
    }
    return folder + QStringLiteral("/tallyglass.socket");
}

bool SingleInstance::claim(const QStringList& arguments, std::chrono::milliseconds patience) {
    if (m_socketPath.isEmpty())
        return true;
    const QByteArray message = StartMessage{qEnvironmentVariable(activationVariable), arguments}.encoded();
    const QDeadlineTimer deadline(patience);
    while (!lock()) {
        if (handOver(m_socketPath, message, deadline))
            return false;
        // The other one is between its lock and its socket, or about to end.
        if (deadline.hasExpired()) {
            qWarning("Tallyglass is running already and doesn't answer.");
            return false;
        }
        QThread::msleep(10);
    }
    listen();
    return true;
}

bool SingleInstance::lock() {
    const QByteArray path = QFile::encodeName(m_socketPath + QStringLiteral(".lock"));
    FileDescriptor file(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file.isOpen())
        return true; // no place for a lock: nothing could tell the starts apart
    if (::flock(file.fd(), LOCK_EX | LOCK_NB) != 0)
        return false;
    m_lock = std::move(file);
    return true;
}

void SingleInstance::listen() {
    QLocalServer::removeServer(m_socketPath); // of a program that crashed
    if (!m_server.listen(m_socketPath))
        m_lock.close(); // deaf: better a second program than none that comes to the front
}

void SingleInstance::greet() {
    while (QLocalSocket* caller = m_server.nextPendingConnection()) {
        caller->setReadBufferSize(StartMessage::largestSize + 1);
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        connect(caller, &QLocalSocket::readyRead, this, [this, caller] { read(*caller); });
        QTimer::singleShot(callerPatience, caller, &QLocalSocket::abort);
        read(*caller);
    }
}

void SingleInstance::read(QLocalSocket& caller) {
    StartMessage message;
    switch (StartMessage::read(caller.peek(caller.bytesAvailable()), message)) {
    case StartMessage::Reading::incomplete:
        return;
    case StartMessage::Reading::malformed:
        caller.abort();
        return;
    case StartMessage::Reading::complete:
        caller.readAll();
        caller.putChar(acknowledgement);
        caller.disconnectFromServer();
        if (!message.activationToken.isEmpty())
            qputenv(activationVariable, message.activationToken.toUtf8());
        emit reopened(message.arguments);
    }
}

} // namespace tallyglass
