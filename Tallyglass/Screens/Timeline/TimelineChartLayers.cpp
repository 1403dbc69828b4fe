// The layers of the timeline's chart on the scene graph.

#include "Tallyglass/Screens/Timeline/TimelineChart.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGOpacityNode>
#include <QSGRectangleNode>
#include <QSGTransformNode>
#include <array>

namespace tallyglass {

namespace {

constexpr double dimmed = 0.4; // opacity of the bars that aren't selected, while one is
constexpr float hoverOpacity = 0.08F;
constexpr float selectionOpacity = 0.14F;

QColor faint(QColor color, float opacity) {
    color.setAlphaF(opacity);
    return color;
}

void removeContent(QSGNode* layer) {
    while (QSGNode* child = layer->firstChild()) {
        layer->removeChildNode(child);
        delete child;
    }
}

} // namespace

/// Back to front. Each layer holds one node or, where there is nothing to draw, none. They are nodes that
/// move or fade, even where nothing does: only from such does the renderer without a graphics processor know
/// where what is put into them later belongs.
struct TimelineChart::Layers : QSGTransformNode {
    Layers() {
        for (QSGNode* layer : layers()) {
            layer->setFlag(OwnedByParent, false);
            appendChildNode(layer);
        }
    }
    ~Layers() override {
        for (QSGNode* layer : layers())
            removeContent(layer);
        removeAllChildNodes();
    }
    Layers(const Layers&) = delete;
    Layers& operator=(const Layers&) = delete;

    QSGTransformNode ground;
    QSGTransformNode hover;
    QSGTransformNode selection;
    QSGOpacityNode bars;
    QSGTransformNode selectedBar;
    QSGTransformNode rule;

    [[nodiscard]] std::array<QSGNode*, 6> layers() {
        return {&ground, &hover, &selection, &bars, &selectedBar, &rule};
    }

    static void setImage(QSGNode& layer, QQuickWindow& window, const QImage& image, QPointF position) {
        auto* node = static_cast<QSGImageNode*>(layer.firstChild());
        if (!node) {
            node = window.createImageNode();
            node->setOwnsTexture(true);
            node->setFiltering(QSGTexture::Nearest); // it lies on whole device pixels
            node->setTexture(window.createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
            layer.appendChildNode(node);
        } else {
            node->setTexture(window.createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
        }
        node->setRect(QRectF(position, QSizeF(image.size()) / image.devicePixelRatio()));
    }

    static void setPatch(QSGNode& layer, QQuickWindow& window,
                         const std::optional<TimelinePainter::Patch>& patch) {
        if (patch)
            setImage(layer, window, patch->image, patch->rect.topLeft());
        else
            removeContent(&layer);
    }

    static void setRectangle(QSGNode& layer, QQuickWindow& window, const QRectF& rect, const QColor& color) {
        if (rect.isEmpty())
            return removeContent(&layer);
        auto* node = static_cast<QSGRectangleNode*>(layer.firstChild());
        if (!node) {
            node = window.createRectangleNode();
            layer.appendChildNode(node);
        }
        node->setRect(rect);
        node->setColor(color);
    }
};

void TimelineChart::updatePolish() {
    if (width() <= 0 || height() <= 0)
        return;
    const TimelinePainter& picture = painter();
    const TimelineLayout& place = picture.layout();
    if (m_frame.isNew) {
        m_frame.ground = picture.ground();
        m_frame.bars = picture.bars();
        m_frame.rule = picture.rule();
        m_frame.hasNewSelection = true;
    }
    const auto band = [&](std::optional<std::size_t> index) {
        return index && *index < count() ? place.band(place.columns.position(*index)) : QRectF();
    };
    if (m_frame.hasNewSelection) {
        const auto selected = m_viewModel ? m_viewModel->selectedIndex() : std::nullopt;
        m_frame.isDimmed = selected.has_value();
        m_frame.selectionBand = band(selected);
        m_frame.selectedBar = selected ? picture.selectedBar(*selected) : std::nullopt;
    }
    m_frame.hoverBand = band(m_hoveredIndex);
    m_frame.tint = picture.style().bar;
    update();
}

QSGNode* TimelineChart::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    auto* layers = static_cast<Layers*>(node);
    if (!layers) {
        if (!m_frame.isNew) { // the window has dropped its scene, and the images went with the last frame
            QMetaObject::invokeMethod(this, &TimelineChart::repaint, Qt::QueuedConnection);
            return nullptr;
        }
        if (m_frame.ground.isNull()) // not polished yet
            return nullptr;
        layers = new Layers;
    }
    QQuickWindow& target = *window();
    if (m_frame.isNew) {
        Layers::setImage(layers->ground, target, m_frame.ground, {});
        Layers::setImage(layers->bars, target, m_frame.bars, {});
        Layers::setPatch(layers->rule, target, m_frame.rule);
    }
    if (m_frame.hasNewSelection) {
        layers->bars.setOpacity(m_frame.isDimmed ? dimmed : 1);
        Layers::setRectangle(layers->selection, target, m_frame.selectionBand,
                             faint(m_frame.tint, selectionOpacity));
        Layers::setPatch(layers->selectedBar, target, m_frame.selectedBar);
    }
    Layers::setRectangle(layers->hover, target, m_frame.hoverBand, faint(m_frame.tint, hoverOpacity));
    Frame next; // without the images, which have gone to the renderer
    next.hoverBand = m_frame.hoverBand;
    next.tint = m_frame.tint;
    m_frame = next;
    return layers;
}

} // namespace tallyglass
