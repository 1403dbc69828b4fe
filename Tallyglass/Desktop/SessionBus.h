// The message bus of the user's desktop, reached without waiting for it.

#pragma once

#include <QDBusConnection>
#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <type_traits>

namespace tallyglass {

/// Connects to a bus and waits for it; unconnected if there is none. Must be callable from any thread.
using BusConnector = std::function<QDBusConnection()>;

/// The user's session bus, as this process's environment has it. None is ever started.
[[nodiscard]] QDBusConnection connectToSessionBus();

/// Connects on another thread, where `prepare(QDBusConnection)` then makes a first use of the bus. What it
/// returns goes to `use` on the thread of `receiver`, unless that has gone by then.
template <typename Prepare, typename Use>
void withBus(QObject* receiver, BusConnector connect, Prepare prepare, Use use) {
    using Result = std::invoke_result_t<Prepare, QDBusConnection>;

    auto promise = std::make_shared<QPromise<Result>>();
    auto* watcher = new QFutureWatcher<Result>(receiver);
    QObject::connect(watcher, &QFutureWatcherBase::finished, receiver, [watcher, use = std::move(use)] {
        watcher->deleteLater();
        use(watcher->result());
    });
    watcher->setFuture(promise->future());
    promise->start();
    QThreadPool::globalInstance()->start([promise, connect = std::move(connect), prepare] {
        promise->addResult(prepare(connect()));
        promise->finish();
    });
}

/// The same with the bus itself.
template <typename Use>
void withBus(QObject* receiver, BusConnector connect, Use use) {
    withBus(
        receiver, std::move(connect), [](QDBusConnection bus) { return bus; }, std::move(use));
}

} // namespace tallyglass
