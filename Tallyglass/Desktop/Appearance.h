// How the user wants programs to look. A value; any thread.

#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <optional>

namespace tallyglass {

struct Appearance {
    bool isDark = false;
    bool reducesMotion = false;
    bool differentiatesWithoutColor = false;
    double textScale = 1; ///< of the usual size of text; within 0.5 and 3

    friend bool operator==(const Appearance&, const Appearance&) = default;
};

/// What the desktop's settings portal has said so far; absent is what it doesn't know.
class PortalSettings {
public:
    /// The namespaces of the settings that matter here.
    [[nodiscard]] static QStringList namespaces();

    /// Takes one setting in, wrapped in variants or not. One of another name or type is passed over.
    void take(const QString& space, const QString& key, const QVariant& value);

    /// Says `fallback` where the portal says nothing.
    [[nodiscard]] Appearance appearance(const Appearance& fallback) const;

private:
    std::optional<bool> m_isDark;
    std::optional<bool> m_animates;
    std::optional<bool> m_reducesMotion;
    std::optional<bool> m_hasHighContrast;
    std::optional<bool> m_showsShapes;
    std::optional<double> m_textScale;
};

} // namespace tallyglass
