// Where the program asks its user for files to open or for a place to save to. The window shows the panel of
// the current request and answers it.
//
// Main thread only.

#pragma once

#include "Tallyglass/Desktop/Alerts.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <filesystem>
#include <vector>

namespace tallyglass {

struct FilePanel {
    Q_GADGET
    Q_PROPERTY(bool asksForFolder READ asksForFolder)
    Q_PROPERTY(bool asksToSave READ asksToSave)
    Q_PROPERTY(QString message MEMBER message)
    Q_PROPERTY(QUrl suggestion READ suggestion)

public:
    enum class Kind { none, openFiles, openFolder, save };

    Kind kind = Kind::none;
    QString message = {}; ///< stands as the panel's title
    QString name = {};    ///< that a file to save gets if the user gives it no other

    [[nodiscard]] bool asksForFolder() const { return kind == Kind::openFolder; }
    [[nodiscard]] bool asksToSave() const { return kind == Kind::save; }
    /// Where a save panel starts: the name in the user's documents folder, or in the home folder without one.
    [[nodiscard]] QUrl suggestion() const;

    friend bool operator==(const FilePanel&, const FilePanel&) = default;
};

class FilePanels : public QObject {
    Q_OBJECT
    Q_PROPERTY(tallyglass::FilePanel current READ current NOTIFY currentChanged)
    Q_PROPERTY(bool isShowing READ isShowing NOTIFY currentChanged)

public:
    /// What the user chose; empty if nothing.
    using Choice = std::vector<std::filesystem::path>;

    /// The alerts outlive the panels.
    explicit FilePanels(Alerts& alerts, QObject* parent = nullptr);

    /// The paths of those that are local files or folders.
    [[nodiscard]] static Choice localFiles(const QList<QUrl>& urls);

    /// Shows the panel when those before it are answered.
    void show(const FilePanel& panel, QObject* receiver, std::function<void(const Choice&)> chosen);

    /// Without a kind if nothing is asked.
    [[nodiscard]] FilePanel current() const { return m_queue.current(); }
    [[nodiscard]] bool isShowing() const { return !m_queue.isEmpty(); }

    /// Answers the current panel, if there is one. What is no local file isn't passed on; an empty list
    /// means that the user declined.
    Q_INVOKABLE void answer(const QList<QUrl>& urls);
    /// Says in an alert why the current panel can't be shown, and answers it as if the user had declined.
    Q_INVOKABLE void fail(const QString& reason);

signals:
    void currentChanged();

private:
    Alerts& m_alerts;
    RequestQueue<FilePanel, Choice> m_queue;
};

} // namespace tallyglass
