// An HTTPS server of a test's own, with a certificate that was made for it. Main thread only.

#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <QByteArray>
#include <QMap>
#include <QSslConfiguration>
#include <QSslServer>
#include <QUrl>

namespace tallyglass::test {

class FeedServer {
public:
    /// Listens; fails the test when it can't.
    FeedServer();

    /// What the whole answer is for a path, headers and all. Without one the server never answers.
    QMap<QByteArray, QByteArray> answers;
    /// The paths that were asked for.
    QList<QByteArray> asked;

    [[nodiscard]] QUrl url(const QString& path) const;
    /// Trusts this server, and no other.
    [[nodiscard]] QSslConfiguration trust() const;

    [[nodiscard]] static QByteArray ok(const QByteArray& body);
    [[nodiscard]] static QByteArray redirect(const QUrl& target);

private:
    void serve(QTcpSocket& caller);

    TemporaryFolder m_folder;
    QSslCertificate m_certificate;
    QSslServer m_server;
};

} // namespace tallyglass::test
