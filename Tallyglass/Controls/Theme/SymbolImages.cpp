#include "Tallyglass/Controls/Theme/SymbolImages.h"

#include "Tallyglass/Controls/Theme/Symbols.h"

#include <QPainter>

namespace tallyglass {

namespace {

constexpr int defaultEdge = 64; ///< enough for any panel, which scales it down

} // namespace

const QString SymbolImages::providerName = QStringLiteral("symbols");

QUrl SymbolImages::source(const QString& symbol, QColor color) {
    QUrl url;
    url.setScheme(QStringLiteral("image"));
    url.setHost(providerName);
    url.setPath(QLatin1Char('/') + symbol + QLatin1Char('/') + color.name().mid(1));
    return url;
}

QImage SymbolImages::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const qsizetype slash = id.lastIndexOf(QLatin1Char('/'));
    const QColor color(QLatin1Char('#') + id.mid(slash + 1));
    const int edge = requestedSize.width() > 0 ? requestedSize.width() : defaultEdge;
    if (size)
        *size = {edge, edge};
    return symbolImage(id.left(slash), color, edge);
}

QImage symbolImage(const QString& symbol, QColor color, int edge) {
    QImage image(edge, edge, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    Symbols::paint(painter, symbol, image.rect(), color);
    return image;
}

} // namespace tallyglass
