#include "Tests/Screens/AccessibleTree.h"

#include <gtest/gtest.h>

#include <QMetaEnum>
#include <QWindow>
#include <stdexcept>

namespace tallyglass::test {

namespace {

template <typename Visit>
void walk(QAccessibleInterface* element, int depth, const Visit& visit) {
    for (int i = 0; element && i < element->childCount(); ++i) {
        QAccessibleInterface* child = element->child(i);
        if (!child || !child->isValid() || child->state().invisible)
            continue;
        visit(child, depth);
        walk(child, depth + 1, visit);
    }
}

QString roleName(QAccessible::Role role) {
    const char* name = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    return name ? QString::fromLatin1(name) : QString::number(role);
}

} // namespace

QString Element::value() const {
    const QString value = m_interface->text(QAccessible::Value);
    return value.isEmpty() ? description() : value;
}

bool Element::isEnabled() const {
    // Qt Quick doesn't tell the desktop of items that are disabled.
    const QVariant enabled = object() ? object()->property("enabled") : QVariant();
    return !m_interface->state().disabled && (!enabled.isValid() || enabled.toBool());
}

QStringList Element::actions() const {
    auto* actions = m_interface->actionInterface();
    return actions ? actions->actionNames() : QStringList();
}

void Element::invoke(const QString& action) const {
    if (actions().contains(action))
        m_interface->actionInterface()->doAction(action);
    else
        ADD_FAILURE() << "\"" << qPrintable(name()) << "\" offers no " << qPrintable(action) << ", only "
                      << qPrintable(actions().join(QStringLiteral(", ")));
}

std::vector<Element> AccessibleTree::elements() const {
    std::vector<Element> all;
    walk(QAccessible::queryAccessibleInterface(m_window), 0,
         [&](QAccessibleInterface* element, int) { all.emplace_back(element); });
    return all;
}

std::optional<Element> AccessibleTree::find(QAccessible::Role role, const QString& name) const {
    for (const Element& element : elements())
        if (element.role() == role && element.name() == name)
            return element;
    return std::nullopt;
}

Element AccessibleTree::get(QAccessible::Role role, const QString& name) const {
    if (const auto element = find(role, name))
        return *element;
    throw std::runtime_error("There is no " + roleName(role).toStdString() + " \"" + name.toStdString() +
                             "\", only\n" + description().toStdString());
}

QStringList AccessibleTree::texts() const {
    QStringList texts;
    for (const Element& element : elements())
        if (element.role() == QAccessible::StaticText || element.role() == QAccessible::Heading)
            texts.append(element.name());
    return texts;
}

std::optional<QString> AccessibleTree::value(const QString& name) const {
    const auto element = find(QAccessible::StaticText, name);
    return element ? std::optional(element->value()) : std::nullopt;
}

QString AccessibleTree::description() const {
    QString lines;
    walk(QAccessible::queryAccessibleInterface(m_window), 0, [&](QAccessibleInterface* element, int depth) {
        const Element shown(element);
        lines += QString(depth * 2, QLatin1Char(' ')) + roleName(shown.role()) + QStringLiteral(" \"") +
                 shown.name() + QLatin1Char('"');
        if (!shown.value().isEmpty())
            lines += QStringLiteral(" = \"") + shown.value() + QLatin1Char('"');
        if (!shown.isEnabled())
            lines += QStringLiteral(" (disabled)");
        lines += QLatin1Char('\n');
    });
    return lines;
}

} // namespace tallyglass::test
