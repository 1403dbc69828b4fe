// What a second start of the program tells the first: four bytes of length, the most significant first, then
// that many bytes, each text in UTF-8 and ended by a zero byte. A value; any thread.

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace tallyglass {

struct StartMessage {
    QString activationToken; ///< the desktop's leave to come to the front; may be empty
    QStringList arguments;

    static constexpr qsizetype largestSize = 1 << 20; ///< of an encoded message

    /// Arguments that go beyond the largest size are left out.
    [[nodiscard]] QByteArray encoded() const;

    enum class Reading { incomplete, malformed, complete };
    /// Reads a message from the bytes that have come so far; `message` is set when it is complete.
    [[nodiscard]] static Reading read(const QByteArray& bytes, StartMessage& message);

    friend bool operator==(const StartMessage&, const StartMessage&) = default;
};

} // namespace tallyglass
