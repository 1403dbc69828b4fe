// Draws every screen and every sheet of a session into PNG files, light and dark, in three sizes of the
// window and once with text of twice the size, so that the look of the program can be judged without a
// display.
//
// Main thread only. The window and the theme have to outlive it. The window's `root` tells what there is to
// draw: `shell.sections`, `screen`, and on both the root and a screen the `sheets` by their names.

#pragma once

#include <QSize>
#include <QString>
#include <filesystem>
#include <functional>

class QObject;
class QQuickItem;
class QQuickWindow;

namespace tallyglass {

class ShellView;
class Theme;

class ScreenPictures {
public:
    ScreenPictures(QQuickWindow& window, Theme& theme);

    /// Writes the pictures to `folder`, which is made when it is missing, each whole or not at all. A
    /// picture is named after the session, the section, the sheet that stands over it or the page that it is
    /// scrolled to, the size and the appearance: "healthy-overview-900x720-dark.png". Calls `written` with
    /// the path of each. Throws `Error`.
    void save(const std::filesystem::path& folder, const QString& session,
              const std::function<void(const QString&)>& written);

private:
    void saveSections();
    void savePages(QQuickItem& screen);
    void saveSheets(const QObject& owner);
    void saveFrame(const QString& subject);
    void settle();

    QQuickWindow& m_window;
    Theme& m_theme;
    QQuickItem& m_root;
    ShellView& m_shell;
    QString m_folder;
    QString m_session;
    QString m_section;
    QString m_look; ///< size, appearance and size of text, as the names end
    std::function<void(const QString&)> m_written;
};

} // namespace tallyglass
