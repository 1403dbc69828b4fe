#include "Tests/Screens/QmlScreen.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlComponent>
#include <stdexcept>

namespace tallyglass::test {

namespace {

QByteArray imports() {
    QByteArray lines = "import QtQuick\n";
    for (const char* room : {"Controls", "Context", "Dashboard", "Timeline", "Compare", "BackupChanges",
                             "FileHistory", "Exclusions", "Diagnostics", "AccessGuide", "Shell"})
        lines += QByteArray("import Tallyglass.") + room + '\n';
    return lines;
}

} // namespace

QmlScreen::QmlScreen(const QByteArray& source, const QVariantMap& properties, QSize size) {
    m_engine.addImportPath(QStringLiteral("qrc:/"));
    QQmlComponent component(&m_engine);
    component.setData(imports() + source, QUrl(QStringLiteral("qrc:/test.qml")));
    if (component.isReady())
        m_root.reset(component.createWithInitialProperties(properties));
    if (!m_root)
        throw std::runtime_error(component.errorString().toStdString());

    m_window = qobject_cast<QQuickWindow*>(m_root.get());
    if (auto* item = qobject_cast<QQuickItem*>(m_root.get())) {
        m_ownWindow = std::make_unique<QQuickWindow>();
        m_window = m_ownWindow.get();
        item->setParentItem(m_window->contentItem());
        item->setSize(size);
    }
    if (!m_window)
        throw std::runtime_error("The root of the QML is neither an item nor a window.");
    m_window->resize(size);
    m_window->show();
    m_window->requestActivate();
    until([this] { return m_window->isActive() && m_window->isExposed(); });
}

QmlScreen::~QmlScreen() {
    m_root.reset();
}

AccessibleTree QmlScreen::tree() const {
    QAccessible::setActive(true); // tells each control that there is now; later ones don't learn of it
    return AccessibleTree(m_window);
}

void QmlScreen::until(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(20'000);
    while (!condition()) {
        if (deadline.hasExpired()) {
            ADD_FAILURE() << "What was waited for never came. The screen shows\n"
                          << qPrintable(tree().description());
            return;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
}

void QmlScreen::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    const QString text = key == Qt::Key_Tab ? QStringLiteral("\t") : QString();
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QCoreApplication::sendEvent(m_window, &event);
    }
    QCoreApplication::processEvents();
}

void QmlScreen::type(const QString& text) {
    for (const QChar character : text) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_unknown, Qt::NoModifier, character);
            QCoreApplication::sendEvent(m_window, &event);
        }
    }
    QCoreApplication::processEvents();
}

void QmlScreen::click(QPointF position) {
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, position, m_window->mapToGlobal(position), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window, &event);
    }
    QCoreApplication::processEvents();
}

QImage QmlScreen::picture() {
    return m_window->grabWindow();
}

QString QmlScreen::focusedName() const {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(m_window->activeFocusItem());
    return interface ? interface->text(QAccessible::Name) : QString();
}

} // namespace tallyglass::test
