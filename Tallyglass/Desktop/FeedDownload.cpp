#include "Tallyglass/Desktop/FeedDownload.h"

#include <QNetworkRequest>
#include <QTimer>

namespace tallyglass {

FeedDownload::FeedDownload(const QUrl& url, const Limits& limits, const QSslConfiguration& tls,
                           QObject* parent)
    : QObject(parent), m_limits(limits) {
    QNetworkRequest request(url);
    request.setSslConfiguration(tls);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(limits.redirects);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    m_reply = m_network.get(request);
    connect(m_reply, &QNetworkReply::readyRead, this, &FeedDownload::read);
    connect(m_reply, &QNetworkReply::finished, this, &FeedDownload::end);
    QTimer::singleShot(limits.time, this, [this] {
        m_isTooLate = true;
        m_reply->abort();
    });
}

FeedDownload::~FeedDownload() {
    m_reply->disconnect(this);
}

void FeedDownload::read() {
    m_text += m_reply->read(m_limits.bytes + 1 - m_text.size());
    if (m_text.size() > m_limits.bytes)
        m_reply->abort();
}

void FeedDownload::end() {
    m_reply->disconnect(this);
    if (m_reply->isOpen()) // not after an abort
        m_text += m_reply->read(m_limits.bytes + 1 - m_text.size());
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_isTooLate)
        emit failed(tr("The server took too long."));
    else if (m_text.size() > m_limits.bytes)
        emit failed(tr("The answer is too long to be a list of versions."));
    else if (m_reply->error() == QNetworkReply::InsecureRedirectError)
        emit failed(tr("The server leads to an address without encryption."));
    else if (m_reply->error() != QNetworkReply::NoError)
        emit failed(m_reply->errorString());
    else if (status != 200 || m_reply->url().scheme() != QStringLiteral("https"))
        emit failed(tr("The server has no list of versions there."));
    else
        emit finished(m_text);
}

} // namespace tallyglass
