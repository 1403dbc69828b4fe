// The feed in which new versions of the program are announced: RSS, with the version in namespaced elements
// or in namespaced attributes of the enclosure. It comes from the network, so nothing in it is taken on
// trust.
//
// Values; any thread.

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

namespace tallyglass {

struct AppcastItem {
    QString version; ///< that is compared; begins with a digit, at most 64 plain characters
    QString name;    ///< the version as people call it, of the same kind
    QUrl link;       ///< where to get it, by HTTPS; empty if the feed says nothing usable

    friend bool operator==(const AppcastItem&, const AppcastItem&) = default;
};

/// The versions in the feed for `system` ("linux", "macos") in the feed's order, without those of special
/// channels and those that make no sense. Absent if the text is no such feed.
[[nodiscard]] std::optional<QList<AppcastItem>> parseAppcast(const QByteArray& text, const QString& system);

/// The newest of them that is newer than `version`.
[[nodiscard]] std::optional<AppcastItem> newestAfter(const QString& version, const QList<AppcastItem>& items);

} // namespace tallyglass
