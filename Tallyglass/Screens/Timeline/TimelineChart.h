// The timeline's picture: one item that draws itself, takes the pointer, the wheel and the keys, and is one
// adjustable element to a screen reader.
//
// It is drawn in a few layers, each an image or a plain rectangle, because those are what every renderer of
// the toolkit can draw, the one without a graphics processor too. Axes and bars are painted when they change;
// a moved selection only sets the opacity of the bars' layer and paints one bar, so that it costs the same
// for ten backups and for thousands.
//
// The x axis can be zoomed and scrolled. The wheel alone zooms only while the chart has the keyboard, so that
// it doesn't hold up who scrolls the page.
//
// Main thread only, but for updatePaintNode, which runs while that waits. The view outlives the item.

#pragma once

#include "Tallyglass/Screens/Timeline/TimelinePainter.h"
#include "Tallyglass/Screens/Timeline/TimelineViewModel.h"

#include <QtQml/qqmlregistration.h>

#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <optional>

namespace tallyglass {

class TimelineChart : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tallyglass::TimelineViewModel* viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged REQUIRED)
    /// Whether the keyboard is here and came by a key, so that it should be seen.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY visualFocusChanged)
    Q_PROPERTY(bool isZoomed READ isZoomed NOTIFY rangeChanged)
    /// What lies under the pointer, in words, and the middle of its top; empty if there is nothing.
    Q_PROPERTY(QString tip READ tip NOTIFY tipChanged)
    Q_PROPERTY(QPointF tipPosition READ tipPosition NOTIFY tipChanged)

    /// The selection as a slider has it: the first backup is 1, none is 0.
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(double minimumValue READ minimumValue CONSTANT)
    Q_PROPERTY(double maximumValue READ maximumValue NOTIFY valueChanged)
    Q_PROPERTY(double stepSize READ minimumValue CONSTANT)

public:
    explicit TimelineChart(QQuickItem* parent = nullptr);

    [[nodiscard]] TimelineViewModel* viewModel() const { return m_viewModel; }
    void setViewModel(TimelineViewModel* viewModel);

    [[nodiscard]] const TimelineRange& range() const { return m_range; }
    [[nodiscard]] bool isZoomed() const;
    /// `factor` times as close around a point, in the item's pixels.
    Q_INVOKABLE void zoom(double factor, double x);
    Q_INVOKABLE void showAll();

    /// Where an entry's bar is drawn, in the item's pixels; empty for one that has none.
    [[nodiscard]] QRectF barOf(std::size_t index);
    [[nodiscard]] const TimelineLayout& layout();

    [[nodiscard]] bool hasVisualFocus() const { return m_hasVisualFocus; }
    [[nodiscard]] QString tip() const { return m_tip; }
    [[nodiscard]] QPointF tipPosition() const { return m_tipPosition; }

    [[nodiscard]] double value() const;
    void setValue(double value);
    [[nodiscard]] double minimumValue() const { return 1; }
    [[nodiscard]] double maximumValue() const;

signals:
    void viewModelChanged();
    void visualFocusChanged();
    void rangeChanged();
    void tipChanged();
    void valueChanged();

protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent* event) override { hoverMoveEvent(event); }
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Layers; ///< the nodes

    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] const TimelinePainter& painter();
    [[nodiscard]] std::optional<std::size_t> indexAt(QPointF point);
    void setRange(const TimelineRange& range);
    void noteLeftmost();
    void setVisualFocus(bool isVisual);
    void setHoveredIndex(std::optional<std::size_t> index);
    void takeEntries();
    void takeSelection();
    void repaint();
    [[nodiscard]] QString tipOf(std::size_t index);

    QPointer<TimelineViewModel> m_viewModel;
    TimelineRange m_range;
    std::size_t m_rangeCount = 0;             ///< of the entries that the range was chosen for
    Date m_leftmost = {};                     ///< of the first entry in sight, to find it in a new list
    std::optional<TimelinePainter> m_painter; ///< absent when the picture has to be painted anew
    std::optional<std::size_t> m_hoveredIndex;
    QString m_tip;
    QPointF m_tipPosition;
    bool m_hasVisualFocus = false;

    std::optional<QPointF> m_pressed; ///< where a button went down
    double m_draggedFrom = 0;         ///< what the range began at then
    bool m_isDragging = false;

    // What the next frame takes over.
    struct Frame {
        bool isNew = false;
        QImage ground;
        QImage bars;
        std::optional<TimelinePainter::Patch> rule;
        bool hasNewSelection = false;
        bool isDimmed = false;
        std::optional<TimelinePainter::Patch> selectedBar;
        QRectF selectionBand;
        QRectF hoverBand;
        QColor tint;
    };
    Frame m_frame;
};

} // namespace tallyglass
