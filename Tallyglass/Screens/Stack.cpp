#include "Tallyglass/Screens/Stack.h"

#include <algorithm>
#include <utility>

namespace tallyglass {

Stack::~Stack() {
    // The base lets go of the children, which tell of it when this is no stack any more.
    for (const QQuickItem* child : childItems())
        child->disconnect(this);
}

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
    spreadWidth();
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
        spreadWidth();
}

void Stack::updatePolish() {
    measure();
    spreadWidth();
}

void Stack::measure() {
    double widest = 0;
    for (const QQuickItem* child : childItems())
        if (child->isVisible())
            widest = std::max(widest, child->implicitWidth());
    setImplicitWidth(widest);
}

void Stack::spreadWidth() {
    if (!isComponentComplete())
        return;
    m_isSpreading = true;
    for (QQuickItem* child : childItems())
        child->setWidth(width());
    m_isSpreading = false;
    arrange();
}

void Stack::arrange() {
    if (m_isSpreading || m_isArranging || !isComponentComplete())
        return;
    m_isArranging = true;
    double bottom = 0;
    bool isFirst = true;
    for (QQuickItem* child : childItems()) {
        if (!child->isVisible() || child->height() == 0) // as what repeats others is
            continue;
        bottom += std::exchange(isFirst, false) ? 0 : m_spacing;
        child->setPosition({0, bottom});
        bottom += child->height();
    }
    m_isArranging = false;
    setImplicitHeight(bottom);
}

} // namespace tallyglass
