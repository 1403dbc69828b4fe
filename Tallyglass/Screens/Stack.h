// Stacks its children from top to bottom, each as wide as itself and as high as it wants to be. What isn't
// visible takes no room.
//
// Unlike the layouts of the toolkit it passes width down and height up at once, in one go: text that wraps at
// the new width is counted with its new height, however deep the nesting. Widths never follow from heights.
//
// Main thread only.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QQuickItem>

namespace tallyglass {

class Stack : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double spacing READ spacing WRITE setSpacing NOTIFY spacingChanged)

public:
    using QQuickItem::QQuickItem;
    ~Stack() override;

    [[nodiscard]] double spacing() const { return m_spacing; }
    void setSpacing(double spacing);

signals:
    void spacingChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void updatePolish() override;

private:
    /// Wants to be as wide as its widest child. Never while its own width is being set, which may depend on
    /// it.
    void measure();
    void spreadWidth();
    void arrange();

    double m_spacing = 0;
    bool m_isSpreading = false;
    bool m_isArranging = false;
};

} // namespace tallyglass
