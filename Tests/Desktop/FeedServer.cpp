#include "Tests/Desktop/FeedServer.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QNetworkProxy>
#include <QProcess>
#include <QSslKey>
#include <QTcpSocket>

namespace tallyglass::test {

namespace {

QByteArray contents(const std::filesystem::path& path) {
    QFile file(QString::fromStdString(path.string()));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

} // namespace

FeedServer::FeedServer() {
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); // it is on this computer
    const auto key = m_folder / "key.pem";
    const auto certificate = m_folder / "certificate.pem";
    QProcess openssl;
    openssl.start("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                              "-nodes", "-keyout", QString::fromStdString(key.string()), "-out",
                              QString::fromStdString(certificate.string()), "-days", "2", "-subj",
                              "/CN=localhost", "-addext", "subjectAltName=DNS:localhost"});
    EXPECT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0)
        << openssl.readAllStandardError().constData();

    m_certificate = QSslCertificate(contents(certificate));
    QSslConfiguration configuration;
    configuration.setLocalCertificate(m_certificate);
    configuration.setPrivateKey(QSslKey(contents(key), QSsl::Ec));
    m_server.setSslConfiguration(configuration);
    EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
    QObject::connect(&m_server, &QTcpServer::pendingConnectionAvailable, &m_server, [this] {
        while (QTcpSocket* caller = m_server.nextPendingConnection()) {
            QObject::connect(caller, &QIODevice::readyRead, caller, [this, caller] { serve(*caller); });
            serve(*caller);
        }
    });
}

void FeedServer::serve(QTcpSocket& caller) {
    if (!caller.peek(caller.bytesAvailable()).contains("\r\n\r\n"))
        return;
    const QByteArray path = caller.readAll().split(' ').value(1);
    asked.append(path);
    if (!answers.contains(path))
        return;
    caller.write(answers[path]);
    caller.disconnectFromHost();
}

QUrl FeedServer::url(const QString& path) const {
    return QUrl(QStringLiteral("https://localhost:%1%2").arg(m_server.serverPort()).arg(path));
}

QSslConfiguration FeedServer::trust() const {
    QSslConfiguration configuration;
    configuration.setCaCertificates({m_certificate});
    return configuration;
}

QByteArray FeedServer::ok(const QByteArray& body) {
    return "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\n\r\n" + body;
}

QByteArray FeedServer::redirect(const QUrl& target) {
    return "HTTP/1.1 302 Found\r\nConnection: close\r\nContent-Length: 0\r\nLocation: " + target.toEncoded() +
           "\r\n\r\n";
}

} // namespace tallyglass::test
