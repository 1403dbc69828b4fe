// Draws every screen and every sheet of a session into PNG files, light and dark, in three sizes of the
// window and once with text of twice the size, so that the look of the program can be judged without a
// display.
//
// Main thread only. The window and the theme have to outlive it. The window's `root` tells what there is to
// draw: `shell.sections` with the `screen` of the one that is picked, and `sheets` that it presents by name.

#pragma once

#include "Tallyglass/Models/FixtureSession.h"

#include <QSize>
#include <QString>
#include <filesystem>
#include <functional>
#include <vector>

class QQuickItem;
class QQuickWindow;

namespace tallyglass {

class BackfillModel;
class BackupChangesViewModel;
class Theme;

class ScreenPictures {
public:
    /// Something else that comes over the window and goes again.
    struct Appearance {
        QString name;
        std::function<void()> show;
        std::function<void()> dismiss;
    };

    ScreenPictures(QQuickWindow& window, Theme& theme, ScreenActions actions,
                   std::vector<Appearance> others = {});

    /// Writes the pictures to `folder`, which is made when it is missing, each whole or not at all. A
    /// picture is named after the session, the section, the sheet that stands over it or the page that it is
    /// scrolled to, the size and the appearance: "healthy-overview-900x720-dark.png". Calls `written` with
    /// the path of each. Throws `Error`.
    void save(const std::filesystem::path& folder, const QString& session,
              const std::function<void(const QString&)>& written);

private:
    void saveSections();
    /// On a machine with two backups, once: does what is to be done if this is the screen that compares them.
    void compareBackups(const QQuickItem& screen);
    static void compareAll(BackfillModel& backfill);
    /// Once: traces a file if this is the screen that does.
    void traceFile(const QQuickItem& screen);
    /// Waits until the screen of exclusions shows its items, and does once what is to be done there.
    void awaitExclusions(const QQuickItem& screen);
    /// Once: captures and measures, if this is the screen that does.
    void diagnose(const QQuickItem& screen);
    void savePages(QQuickItem& screen);
    void saveSheets();
    /// Waits until a sheet of changes shows what it is about.
    void awaitChanges(BackupChangesViewModel& changes);
    void saveFrame(const QString& subject);
    void settle();

    QQuickWindow& m_window;
    Theme& m_theme;
    const ScreenActions m_actions;
    const std::vector<Appearance> m_others;
    QQuickItem& m_root;
    bool m_hasDiagnosed = false;
    QString m_changedFile; ///< one that the comparison found
    QString m_folder;
    QString m_session;
    QString m_section;
    QString m_look; ///< size, appearance and size of text, as the names end
    std::function<void(const QString&)> m_written;
};

} // namespace tallyglass
