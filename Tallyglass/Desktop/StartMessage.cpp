#include "Tallyglass/Desktop/StartMessage.h"

#include <QList>
#include <QtEndian>

namespace tallyglass {

namespace {

constexpr qsizetype prefixSize = sizeof(quint32);

} // namespace

QByteArray StartMessage::encoded() const {
    QByteArray body = activationToken.toUtf8() + '\0';
    for (const QString& argument : arguments) {
        const QByteArray text = argument.toUtf8() + '\0';
        if (prefixSize + body.size() + text.size() > largestSize)
            break;
        body += text;
    }
    QByteArray message(prefixSize, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(body.size()), message.data());
    return message + body;
}

StartMessage::Reading StartMessage::read(const QByteArray& bytes, StartMessage& message) {
    if (bytes.size() < prefixSize)
        return Reading::incomplete;
    const qsizetype size = prefixSize + qsizetype{qFromBigEndian<quint32>(bytes.constData())};
    if (size > largestSize || bytes.size() > size)
        return Reading::malformed;
    if (bytes.size() < size)
        return Reading::incomplete;
    if (size == prefixSize || bytes.back() != '\0')
        return Reading::malformed;

    QList<QByteArray> texts = bytes.sliced(prefixSize).chopped(1).split('\0');
    message.activationToken = QString::fromUtf8(texts.takeFirst());
    message.arguments.clear();
    for (const QByteArray& text : texts)
        message.arguments.append(QString::fromUtf8(text));
    return Reading::complete;
}

} // namespace tallyglass
