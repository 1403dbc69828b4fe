#include "Tallyglass/Desktop/FilePanels.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace tallyglass {

QUrl FilePanel::suggestion() const {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    const QDir folder = documents.exists() ? documents : QDir::home();
    return name.isEmpty() ? QUrl() : QUrl::fromLocalFile(folder.filePath(name));
}

namespace {

/// The path of a local file; empty for anything else. Qt's own dialog gives a file whose name was typed as a
/// URL without a scheme, in which some characters of the name end the path.
QString localPath(const QUrl& url) {
    if (url.isLocalFile())
        return url.toLocalFile();
    if (!url.scheme().isEmpty() || !url.path().startsWith(QLatin1Char('/')))
        return {};
    return url.path(QUrl::FullyDecoded) +
           (url.hasQuery() ? QLatin1Char('?') + url.query(QUrl::FullyDecoded) : QString()) +
           (url.hasFragment() ? QLatin1Char('#') + url.fragment(QUrl::FullyDecoded) : QString());
}

} // namespace

FilePanels::FilePanels(Alerts& alerts, QObject* parent) : QObject(parent), m_alerts(alerts) {}

FilePanels::Choice FilePanels::localFiles(const QList<QUrl>& urls) {
    Choice choice;
    for (const QUrl& url : urls)
        if (const QString path = localPath(url); !path.isEmpty())
            choice.emplace_back(QFile::encodeName(path).toStdString());
    return choice;
}

void FilePanels::show(const FilePanel& panel, QObject* receiver, std::function<void(const Choice&)> chosen) {
    const bool isNext = !isShowing();
    m_queue.add(panel, receiver, std::move(chosen));
    if (isNext)
        emit currentChanged();
}

void FilePanels::answer(const QList<QUrl>& urls) {
    if (!isShowing())
        return;
    const auto passOn = m_queue.take();
    emit currentChanged();
    passOn(localFiles(urls));
}

void FilePanels::fail(const QString& reason) {
    if (!isShowing())
        return;
    m_alerts.show({.kind = Alert::Kind::warning,
                   .title = tr("The dialog for choosing files can't be shown"),
                   .text = reason.trimmed()});
    answer({});
}

} // namespace tallyglass
