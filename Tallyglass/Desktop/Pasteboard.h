// The desktop's pasteboard, to which the program only copies. Main thread only.

#pragma once

#include <QObject>
#include <QString>

namespace tallyglass {

class Pasteboard : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    Q_INVOKABLE virtual void setText(const QString& text) = 0;
};

class DesktopPasteboard : public Pasteboard {
    Q_OBJECT

public:
    using Pasteboard::Pasteboard;

    void setText(const QString& text) override;
};

} // namespace tallyglass
