// The backups in which the traced item is: a cell for each, coloured by the version that it holds, or hollow.
// One adjustable element to a screen reader: the arrow keys walk the backups, the page keys the versions.
//
// Main thread only. The view model outlives the item.

#pragma once

#include "Tallyglass/Screens/FileHistory/FileHistoryViewModel.h"
#include "Tallyglass/Screens/FileHistory/PresenceCells.h"

#include <QtQml/qqmlregistration.h>

#include <QPointer>
#include <QQuickPaintedItem>
#include <QString>
#include <optional>

namespace tallyglass {

class Theme;

class PresenceStrip : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(tallyglass::FileHistoryViewModel* viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged REQUIRED)
    /// Whether the keyboard focus is here and came by a key, so that it should be visible.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY visualFocusChanged)
    /// The text of the backup under the pointer; empty if there is none.
    Q_PROPERTY(QString hoveredText READ hoveredText NOTIFY hoveredTextChanged)
    /// The selection as a slider has it: the first backup is 1, none is 0.
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(double minimumValue READ minimumValue CONSTANT)
    Q_PROPERTY(double maximumValue READ maximumValue NOTIFY valueChanged)
    Q_PROPERTY(double stepSize READ minimumValue CONSTANT)

public:
    explicit PresenceStrip(QQuickItem* parent = nullptr);

    [[nodiscard]] FileHistoryViewModel* viewModel() const { return m_viewModel; }
    void setViewModel(FileHistoryViewModel* viewModel);

    [[nodiscard]] bool hasVisualFocus() const { return m_hasVisualFocus; }
    [[nodiscard]] QString hoveredText() const { return m_hoveredText; }
    [[nodiscard]] double value() const;
    void setValue(double value);
    [[nodiscard]] double minimumValue() const { return 1; }
    [[nodiscard]] double maximumValue() const;

    /// Selects the backup so many further on; from none the newest.
    Q_INVOKABLE void moveBy(int by);

    void paint(QPainter* painter) override;

signals:
    void viewModelChanged();
    void visualFocusChanged();
    void hoveredTextChanged();
    void valueChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void hoverEnterEvent(QHoverEvent* event) override { hoverMoveEvent(event); }
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;

private:
    [[nodiscard]] std::size_t count() const { return m_viewModel ? m_viewModel->presence().size() : 0; }
    void layOut();
    void takeSelection();
    void moveToOtherVersion(int direction);
    void setVisualFocus(bool isVisual);
    void setHoveredText(const QString& text);

    QPointer<FileHistoryViewModel> m_viewModel;
    QPointer<Theme> m_theme;
    PresenceCells m_cells;
    QString m_hoveredText;
    bool m_hasVisualFocus = false;
};

} // namespace tallyglass
