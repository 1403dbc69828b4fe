// A window as a screen reader meets it: its accessible elements with their roles, names, values and actions.
//
// Main thread only. An Element is valid until the screen changes what it stands for; find it again after
// that.

#pragma once

#include <QAccessible>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

class QWindow;

namespace tallyglass::test {

class Element {
public:
    explicit Element(QAccessibleInterface* interface) : m_interface(interface) {}

    [[nodiscard]] QAccessible::Role role() const { return m_interface->role(); }
    [[nodiscard]] QString name() const { return m_interface->text(QAccessible::Name); }
    /// What the element says besides its name. A static text carries its value here, since only numbers have
    /// a value of their own in the desktop's accessibility.
    [[nodiscard]] QString value() const;
    [[nodiscard]] QString description() const { return m_interface->text(QAccessible::Description); }
    [[nodiscard]] bool isEnabled() const;
    [[nodiscard]] bool isChecked() const { return m_interface->state().checked; }
    [[nodiscard]] bool isFocused() const { return m_interface->state().focused; }
    [[nodiscard]] QStringList actions() const;
    [[nodiscard]] QObject* object() const { return m_interface->object(); }

    /// Does what a screen reader's user asks for, such as QAccessibleActionInterface::pressAction(). Fails
    /// the test when the element doesn't offer it.
    void invoke(const QString& action) const;
    void press() const { invoke(QAccessibleActionInterface::pressAction()); }

private:
    QAccessibleInterface* m_interface;
};

class AccessibleTree {
public:
    explicit AccessibleTree(QWindow* window) : m_window(window) {}

    /// All visible elements, in reading order.
    [[nodiscard]] std::vector<Element> elements() const;

    /// The first with this role and name; absent if there is none.
    [[nodiscard]] std::optional<Element> find(QAccessible::Role role, const QString& name) const;
    /// As `find`, but fails the test, with the whole tree in words, when there is none.
    [[nodiscard]] Element get(QAccessible::Role role, const QString& name) const;

    /// The names of all static texts and headings, in reading order.
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] bool hasText(const QString& text) const { return texts().contains(text); }
    /// The value of the static text with this name; absent if there is none.
    [[nodiscard]] std::optional<QString> value(const QString& name) const;

    /// The whole tree, a line for each element, to read when a test fails.
    [[nodiscard]] QString description() const;

private:
    QWindow* m_window;
};

} // namespace tallyglass::test
