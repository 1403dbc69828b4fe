// The desktop's clipboard, to which the program only copies. Main thread only.

#pragma once

#include <QObject>
#include <QString>

namespace tallyglass {

class Clipboard : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    Q_INVOKABLE virtual void setText(const QString& text) = 0;
};

class DesktopClipboard : public Clipboard {
    Q_OBJECT

public:
    using Clipboard::Clipboard;

    void setText(const QString& text) override;
};

} // namespace tallyglass
