// Gets one small text by HTTPS, with bounds on its size and on the time it takes.
//
// Main thread only. Ends with exactly one of its signals, unless it is destroyed before, which gives the
// download up.

#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QSslConfiguration>
#include <QUrl>
#include <chrono>

namespace tallyglass {

class FeedDownload : public QObject {
    Q_OBJECT

public:
    struct Limits {
        qint64 bytes = 1 << 20;
        std::chrono::milliseconds time = std::chrono::seconds(30); ///< in all
        int redirects = 5;
    };

    /// Requires: `url` is one of HTTPS. Redirects to anything else fail.
    FeedDownload(const QUrl& url, const Limits& limits, const QSslConfiguration& tls,
                 QObject* parent = nullptr);
    ~FeedDownload() override;

signals:
    void finished(const QByteArray& text);
    void failed(const QString& reason); ///< a sentence

private:
    void read();
    void end();

    const Limits m_limits;
    QNetworkAccessManager m_network;
    QNetworkReply* m_reply;
    QByteArray m_text;
    bool m_isTooLate = false;
};

} // namespace tallyglass
