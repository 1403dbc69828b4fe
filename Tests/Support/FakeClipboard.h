// A clipboard that keeps what was copied last to itself.

#pragma once

#include "Tallyglass/Desktop/Clipboard.h"

namespace tallyglass::test {

class FakeClipboard : public Clipboard {
public:
    void setText(const QString& copied) override { text = copied; }
    QString text;
};

} // namespace tallyglass::test
