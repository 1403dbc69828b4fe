// One line of text in a colour that changes from its start to its end. Loses its middle when it is too long.
//
// Main thread only. Says nothing to a screen reader by itself.

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
    QString m_shown; ///< the text as it fits
    bool m_isTruncated = false;
};

} // namespace tallyglass
