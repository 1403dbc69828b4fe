#include "Tallyglass/Desktop/Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tallyglass {

void DesktopPasteboard::setText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace tallyglass
