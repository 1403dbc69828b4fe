#include "Tallyglass/Controls/Theme/SymbolShape.h"

#include "Tallyglass/Controls/Theme/Symbols.h"

namespace tallyglass {

SymbolShape::SymbolShape(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &SymbolShape::lookChanged, this, &SymbolShape::takeLook);
}

void SymbolShape::takeLook() {
    const double side = m_name.isEmpty() ? 0 : m_size;
    setImplicitSize(side, side);
    update();
}

void SymbolShape::paint(QPainter* painter) {
    Symbols::paint(*painter, m_name, boundingRect(), m_color);
}

} // namespace tallyglass
