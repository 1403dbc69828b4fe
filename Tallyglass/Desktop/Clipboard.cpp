#include "Tallyglass/Desktop/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace tallyglass {

void DesktopClipboard::setText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

} // namespace tallyglass
