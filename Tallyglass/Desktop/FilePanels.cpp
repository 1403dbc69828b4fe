#include "Tallyglass/Desktop/FilePanels.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace tallyglass {

QUrl FilePanel::suggestion() const {
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return name.isEmpty() ? QUrl() : QUrl::fromLocalFile(folder.filePath(name));
}

FilePanels::FilePanels(Alerts& alerts, QObject* parent) : QObject(parent), m_alerts(alerts) {}

FilePanels::Choice FilePanels::localFiles(const QList<QUrl>& urls) {
    Choice choice;
    for (const QUrl& url : urls)
        if (url.isLocalFile())
            choice.emplace_back(QFile::encodeName(url.toLocalFile()).toStdString());
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
