#pragma once
#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
namespace tallyglass {
class Probe : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString words READ words CONSTANT)
public:
    [[nodiscard]] QString words() const;
};
} // namespace tallyglass
