#include "Tallyglass/Screens/Stack.h"

#include <algorithm>

namespace tallyglass {

void Stack::setSpacing(double spacing) {
    if (spacing == m_spacing)
        return;
    m_spacing = spacing;
    arrange();
    emit spacingChanged();
}

void Stack::componentComplete() {
    QQuickItem::componentComplete();
    measure();
    arrange();
}

void Stack::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemChildAddedChange) {
        for (const auto signal : {&QQuickItem::heightChanged, &QQuickItem::visibleChanged})
            connect(data.item, signal, this, &Stack::arrange);
        connect(data.item, &QQuickItem::implicitWidthChanged, this, &Stack::polish);
        polish(); // later, when it has found its place among its siblings
    } else if (change == ItemChildRemovedChange) {
        data.item->disconnect(this);
        polish();
    }
    QQuickItem::itemChange(change, data);
}

void Stack::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.width() != before.width())
        arrange();
}

void Stack::updatePolish() {
    measure();
    arrange();
}

std::vector<QQuickItem*> Stack::shownChildren() const {
    std::vector<QQuickItem*> shown;
    for (QQuickItem* child : childItems())
        if (child->isVisible() && !(child->height() == 0 && child->implicitWidth() == 0)) // as repeaters are
            shown.push_back(child);
    return shown;
}

void Stack::measure() {
    double widest = 0;
    for (const QQuickItem* child : shownChildren())
        widest = std::max(widest, child->implicitWidth());
    setImplicitWidth(widest);
}

void Stack::arrange() {
    if (m_isArranging || !isComponentComplete())
        return;
    m_isArranging = true;
    double bottom = 0;
    for (QQuickItem* child : shownChildren()) {
        child->setWidth(width());
        child->setPosition({0, bottom});
        bottom += child->height() + m_spacing;
    }
    m_isArranging = false;
    setImplicitHeight(std::max(0.0, bottom - m_spacing));
}

} // namespace tallyglass
