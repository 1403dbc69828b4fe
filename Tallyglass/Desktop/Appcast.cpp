#include "Tallyglass/Desktop/Appcast.h"

#include "Tallyglass/Desktop/Version.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace tallyglass {

namespace {

bool isVersion(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("\\A[0-9][0-9A-Za-z.+_-]{0,63}\\z"));
    return pattern.match(text).hasMatch();
}

QUrl secureUrl(const QString& text) {
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    return url.isValid() && url.scheme() == QStringLiteral("https") && !url.host().isEmpty() ? url : QUrl();
}

/// The attribute of this name in any namespace.
QString namespacedAttribute(const QXmlStreamReader& xml, QLatin1StringView name) {
    for (const auto& attribute : xml.attributes())
        if (attribute.name() == name && !attribute.namespaceUri().isEmpty())
            return attribute.value().toString();
    return {};
}

/// What one item of the feed says, before it is judged.
struct ItemText {
    QString version;
    QString name;
    QUrl page;
    QUrl download;
    bool isSpecial = false; ///< of a channel that only those who ask for it follow
    bool isForAnother = false;

    void read(QXmlStreamReader& xml, const QString& system);
    void readEnclosure(const QXmlStreamReader& xml, const QString& system);
    [[nodiscard]] std::optional<AppcastItem> item() const;
};

void ItemText::read(QXmlStreamReader& xml, const QString& system) {
    while (xml.readNextStartElement()) {
        const bool isOurs = !xml.namespaceUri().isEmpty();
        const auto element = xml.name();
        const auto text = [&xml] {
            return xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        };
        if (isOurs && element == u"version")
            version = text();
        else if (isOurs && element == u"shortVersionString")
            name = text();
        else if (isOurs && element == u"channel")
            isSpecial = !text().isEmpty() || isSpecial;
        else if (!isOurs && element == u"link")
            page = secureUrl(text());
        else {
            if (!isOurs && element == u"enclosure")
                readEnclosure(xml, system);
            xml.skipCurrentElement();
        }
    }
}

void ItemText::readEnclosure(const QXmlStreamReader& xml, const QString& system) {
    if (!download.isEmpty())
        return; // there was one for this system already
    const QString wanted = namespacedAttribute(xml, QLatin1StringView("os"));
    isForAnother = !wanted.isEmpty() && wanted.compare(system, Qt::CaseInsensitive) != 0;
    if (isForAnother)
        return;
    download = secureUrl(xml.attributes().value(QStringLiteral("url")).toString());
    if (version.isEmpty())
        version = namespacedAttribute(xml, QLatin1StringView("version"));
    if (name.isEmpty())
        name = namespacedAttribute(xml, QLatin1StringView("shortVersionString"));
}

std::optional<AppcastItem> ItemText::item() const {
    if (isSpecial || isForAnother || !isVersion(version))
        return std::nullopt;
    return AppcastItem{version, isVersion(name) ? name : version, page.isEmpty() ? download : page};
}

/// Goes to the root element. False if there is none of this name, or a document type before it: a feed needs
/// none, and a hostile one would define entities there.
bool enterRoot(QXmlStreamReader& xml, QStringView name) {
    while (!xml.atEnd() && !xml.isStartElement())
        if (xml.readNext() == QXmlStreamReader::DTD)
            return false;
    return xml.isStartElement() && xml.name() == name;
}

} // namespace

std::optional<QList<AppcastItem>> parseAppcast(const QByteArray& text, const QString& system) {
    QXmlStreamReader xml(text);
    if (!enterRoot(xml, u"rss"))
        return std::nullopt;
    QList<AppcastItem> items;
    while (xml.readNextStartElement()) {
        if (xml.name() != u"channel") {
            xml.skipCurrentElement();
            continue;
        }
        while (xml.readNextStartElement()) {
            if (xml.name() != u"item") {
                xml.skipCurrentElement();
                continue;
            }
            ItemText itemText;
            itemText.read(xml, system);
            if (auto item = itemText.item())
                items.append(*std::move(item));
        }
    }
    if (xml.hasError())
        return std::nullopt;
    return items;
}

std::optional<AppcastItem> newestAfter(const QString& version, const QList<AppcastItem>& items) {
    const auto isOlder = [](const AppcastItem& one, const AppcastItem& other) {
        return compareVersions(one.version, other.version) < 0;
    };
    const auto newest = std::max_element(items.begin(), items.end(), isOlder);
    if (newest == items.end() || compareVersions(newest->version, version) <= 0)
        return std::nullopt;
    return *newest;
}

} // namespace tallyglass
