// A long list as a strip of cells, coloured by what each item is. One adjustable element to a screen reader:
// the arrow keys walk the items, the page keys go to the next one that differs.
//
// Derived classes say what the items are and paint them. Main thread only.

#pragma once

#include "Tallyglass/Controls/Charts/CellLayout.h"

#include <QtQml/qqmlregistration.h>

#include <QPointer>
#include <QQuickPaintedItem>
#include <QString>
#include <optional>

namespace tallyglass {

class Theme;

class CellStrip : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS

    /// Whether the keyboard focus is here and came by a key, so that it should be visible.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY visualFocusChanged)
    /// The text of the item under the pointer, or else of the selected one; empty if there is neither.
    Q_PROPERTY(QString caption READ caption NOTIFY captionChanged)
    /// The text of the selected item; empty if there is none.
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY valueChanged)
    /// The selection as a slider has it: the first item is 1, none is 0.
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(double minimumValue READ minimumValue CONSTANT)
    Q_PROPERTY(double maximumValue READ maximumValue NOTIFY valueChanged)
    Q_PROPERTY(double stepSize READ minimumValue CONSTANT)

public:
    explicit CellStrip(QQuickItem* parent = nullptr);

    [[nodiscard]] bool hasVisualFocus() const { return m_hasVisualFocus; }
    [[nodiscard]] QString caption() const;
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] double value() const;
    void setValue(double value);
    [[nodiscard]] double minimumValue() const { return 1; }
    [[nodiscard]] double maximumValue() const { return static_cast<double>(count()); }

    /// Selects the item so many further on; from none the last.
    Q_INVOKABLE void moveBy(int by);
    /// Emits activated() for the selected item, if there is one.
    Q_INVOKABLE void activateSelected();

    void paint(QPainter* painter) override;

signals:
    void visualFocusChanged();
    void captionChanged();
    void valueChanged();
    void activated(int item); ///< clicked, or chosen by the Return or the space key

protected:
    [[nodiscard]] virtual std::size_t count() const = 0;
    [[nodiscard]] virtual std::optional<std::size_t> selected() const = 0;
    virtual void select(std::size_t item) = 0;
    [[nodiscard]] virtual QString textOf(std::size_t item) const = 0;
    [[nodiscard]] virtual bool areAlike(std::size_t first, std::size_t second) const = 0;
    /// Paints the items from `first` to before `end` into one cell.
    virtual void paintCell(QPainter& painter, const QRectF& box, std::size_t first,
                           std::size_t end) const = 0;

    /// Derived classes call these when the items or the selection have changed.
    void takeItems();
    void takeSelection();

    [[nodiscard]] const Theme& theme() const { return *m_theme; }
    [[nodiscard]] static double cornerRadius(const QRectF& box);

    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hoverEnterEvent(QHoverEvent* event) override { hoverMoveEvent(event); }
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;

private:
    void paintSelection(QPainter& painter, std::size_t item) const;
    void moveToDifferent(int direction);
    void setVisualFocus(bool isVisual);
    void setHovered(std::optional<std::size_t> item);

    QPointer<Theme> m_theme;
    CellLayout m_layout;
    std::optional<std::size_t> m_hovered;
    bool m_hasVisualFocus = false;
};

} // namespace tallyglass
