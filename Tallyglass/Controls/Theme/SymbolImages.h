// Symbols as images, for what doesn't draw with the program's own font, such as the desktop's tray.

#pragma once

#include <QColor>
#include <QQuickImageProvider>
#include <QString>
#include <QUrl>

namespace tallyglass {

class SymbolImages : public QQuickImageProvider {
public:
    /// The name under which an engine knows it.
    static const QString providerName;

    SymbolImages() : QQuickImageProvider(Image) {}

    /// Where the image of a symbol is found.
    [[nodiscard]] static QUrl source(const QString& symbol, QColor color);

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

/// The symbol on a transparent square of `edge` pixels.
[[nodiscard]] QImage symbolImage(const QString& symbol, QColor color, int edge);

} // namespace tallyglass
