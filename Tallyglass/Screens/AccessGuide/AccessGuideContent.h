// The words of the guide to Full Disk Access, for one of the two that can be given it: this program, or the
// helper. Values; what changes while the guide is open is whether access has been granted and whether the
// path was just copied.

#pragma once

#include "Tallyglass/Controls/Theme/Theme.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantList>

namespace tallyglass {

enum class AccessTarget { app, helper };

/// One numbered line of the guide.
struct AccessStep {
    Q_GADGET
    QML_VALUE_TYPE(accessStep)

    Q_PROPERTY(QString glyph MEMBER glyph)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString detail MEMBER detail)

public:
    QString glyph; ///< name of a symbol
    QString title;
    QString detail; ///< may be empty

    friend bool operator==(const AccessStep&, const AccessStep&) = default;
};

struct AccessGuideContent {
    Q_GADGET
    QML_VALUE_TYPE(accessGuideContent)

    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tallyglass::Theme::Role role MEMBER role)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString item MEMBER item)
    Q_PROPERTY(QString illustration MEMBER illustration)
    Q_PROPERTY(QVariantList steps READ stepList)
    Q_PROPERTY(QString primaryText MEMBER primaryText)
    Q_PROPERTY(QString secondaryText MEMBER secondaryText)
    Q_PROPERTY(QString secondarySymbol MEMBER secondarySymbol)
    Q_PROPERTY(QString status MEMBER status)
    Q_PROPERTY(QString statusSymbol MEMBER statusSymbol)

public:
    QString symbol;
    Theme::Role role = Theme::Role::accent; ///< of the symbol and the status
    QString title;
    QString text;
    QString item;         ///< what is to be dragged, by name
    QString illustration; ///< the illustration in words
    QList<AccessStep> steps;
    QString primaryText;
    QString secondaryText;
    QString secondarySymbol; ///< may be empty
    QString status;
    QString statusSymbol; ///< empty while access is waited for

    [[nodiscard]] QVariantList stepList() const;

    friend bool operator==(const AccessGuideContent&, const AccessGuideContent&) = default;
};

[[nodiscard]] AccessGuideContent accessGuideContent(AccessTarget target, bool isGranted, bool didCopyPath);

} // namespace tallyglass
