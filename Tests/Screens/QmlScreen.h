// A piece of QML in a window off screen, as a test needs it to look at what a screen shows and does.
//
// Main thread only. Needs Tests/Support/QtMain.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"
#include "Tests/Screens/AccessibleTree.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariantMap>
#include <functional>
#include <memory>

namespace tallyglass::test {

class QmlScreen {
public:
    /// `source` is the text of a QML file; imports of Qt Quick and of all our modules are put before it. Its
    /// root is an item, which fills the window, or a window. `properties` are set before the first binding
    /// runs.
    explicit QmlScreen(const QByteArray& source, const QVariantMap& properties = {}, QSize size = {900, 720});
    ~QmlScreen();

    /// As a screen reader finds it that starts now.
    [[nodiscard]] AccessibleTree tree() const;
    [[nodiscard]] QQuickWindow* window() const { return m_window; }
    [[nodiscard]] QObject* root() const { return m_root.get(); }
    [[nodiscard]] Theme& theme() { return *Theme::of(m_engine); }

    /// Lets events, bindings and animations run until `condition` holds; fails the test when it never does.
    void until(const std::function<bool()>& condition);
    /// Presses and releases a key, as the keyboard would.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Types a text, as the keyboard would.
    void type(const QString& text);
    void click(QPointF position);
    /// What the window shows.
    [[nodiscard]] QImage picture();
    /// The item that has the keyboard, by its accessible name; empty if there is none.
    [[nodiscard]] QString focusedName() const;

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_ownWindow;
    std::unique_ptr<QObject> m_root;
    QQuickWindow* m_window = nullptr;
};

} // namespace tallyglass::test
