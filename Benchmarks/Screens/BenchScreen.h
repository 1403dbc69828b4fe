// A screen in a window off screen, drawn by the renderer that has no graphics processor to help it, with the
// application around it. One at a time; main thread only.

#pragma once

#include "Tallyglass/Screens/Context/ScreenContext.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <memory>

namespace tallyglass::bench {

class BenchScreen {
public:
    explicit BenchScreen(const AppEnvironment& environment = AppEnvironment());
    ~BenchScreen();
    BenchScreen(const BenchScreen&) = delete;
    BenchScreen& operator=(const BenchScreen&) = delete;

    /// Shows the screen of this file, such as "Compare/CompareView.qml", in an active window.
    void show(const char* file, QSize size);

    [[nodiscard]] AppModel& model();
    [[nodiscard]] QQuickWindow& window() { return *m_window; }
    [[nodiscard]] QQuickItem& root() { return *m_root; }

    /// Lets bindings and layouts come to rest.
    void settle();
    /// Draws what has changed at once, instead of at the next tick. Throws std::exception if no frame was
    /// drawn since the last call.
    void drawFrame();

private:
    struct Surroundings;

    int m_argc = 1;
    char m_name[17] = "tallyglass-bench";
    char* m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QGuiApplication> m_application;
    std::unique_ptr<Surroundings> m_surroundings;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_root;
    int m_frames = 0;
    int m_framesSeen = 0; ///< by drawFrame()
};

} // namespace tallyglass::bench
