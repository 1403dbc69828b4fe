// One line of text with a colour gradient from start to end. Elided in the middle when too long.
//
// Main thread only. Ignored by screen readers unless it is given a name.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QFont>
#include <QQuickPaintedItem>
#include <QString>

namespace tallyglass {

class GradientText : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QString text MEMBER m_text NOTIFY textChanged)
    Q_PROPERTY(double pixelSize MEMBER m_pixelSize NOTIFY textChanged)
    Q_PROPERTY(QColor startColor MEMBER m_startColor NOTIFY colorChanged)
    Q_PROPERTY(QColor endColor MEMBER m_endColor NOTIFY colorChanged)
    Q_PROPERTY(bool truncated READ isTruncated NOTIFY truncatedChanged)

public:
    explicit GradientText(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

    [[nodiscard]] bool isTruncated() const { return m_isTruncated; }

signals:
    void textChanged();
    void colorChanged();
    void truncatedChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    [[nodiscard]] QFont font() const;
    void measure();
    void elide();

    QString m_text;
    double m_pixelSize = 20;
    QColor m_startColor;
    QColor m_endColor;
    QString m_elided; ///< the text as it fits
    bool m_isTruncated = false;
};

} // namespace tallyglass
