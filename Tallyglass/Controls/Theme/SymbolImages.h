// Symbols as images, where the symbol font can't be used, such as in the system tray.

#pragma once

#include <QColor>
#include <QQuickImageProvider>
#include <QString>
#include <QUrl>

namespace tallyglass {

class SymbolImages : public QQuickImageProvider {
public:
    /// Its name in an engine.
    static const QString providerName;

    SymbolImages() : QQuickImageProvider(Image) {}

    /// The URL of the image of a symbol.
    [[nodiscard]] static QUrl source(const QString& symbol, QColor color);

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

/// The symbol on a transparent square of `edge` pixels.
[[nodiscard]] QImage symbolImage(const QString& symbol, QColor color, int edge);

} // namespace tallyglass
