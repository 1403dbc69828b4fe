// One running program for each user: the first start stays and listens, a later one hands its arguments to it
// and ends.
//
// A lock decides who is first. The system drops it however its holder ends, so neither a crash nor two starts
// in the same moment leave two programs or none. Main thread only.

#pragma once

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <QLocalServer>
#include <QObject>
#include <QStringList>
#include <chrono>

class QLocalSocket;

namespace tallyglass {

class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Programs with the same `socketPath` are one. Beside it stands the lock, "<socketPath>.lock".
    explicit SingleInstance(QString socketPath = standardSocketPath(), QObject* parent = nullptr);
    ~SingleInstance() override;

    /// In a folder that belongs to this user alone; empty if there can be none, and then every start is the
    /// first.
    [[nodiscard]] static QString standardSocketPath();

    /// True if this program is the first and goes on, listening from now. False if another one runs, to which
    /// the arguments have been given. Waits for that one, for `patience` at most; it then counts as running
    /// all the same.
    [[nodiscard]] bool claim(const QStringList& arguments,
                             std::chrono::milliseconds patience = std::chrono::seconds(5));

signals:
    /// Another start gave its arguments to this program.
    void reopened(const QStringList& arguments);

private:
    [[nodiscard]] bool lock();
    void listen();
    void greet();
    void read(QLocalSocket& caller);

    const QString m_socketPath;
    FileDescriptor m_lock;
    QLocalServer m_server;
};

} // namespace tallyglass
