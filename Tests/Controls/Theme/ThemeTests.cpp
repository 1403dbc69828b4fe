#include "Tallyglass/Controls/Theme/Symbols.h"
#include "Tallyglass/Controls/Theme/Theme.h"

#include <gtest/gtest.h>

#include <QFile>
#include <cmath>

namespace tallyglass {
namespace {

/// The relative luminance of the web's contrast rule, 0 to 1.
double luminance(QColor color) {
    const auto linear = [](float component) {
        const double c = component;
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(QColor one, QColor other) {
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

std::vector<QColor> backgrounds(const Theme& theme) {
    return {theme.windowBackground(),  theme.sidebarBackground(), theme.cardBackground(),
            theme.controlBackground(), theme.hoverBackground(),   theme.selectedBackground()};
}

constexpr Theme::Role roles[] = {Theme::Role::text,       Theme::Role::secondaryText, Theme::Role::accent,
                                 Theme::Role::accentSoft, Theme::Role::healthy,       Theme::Role::warning,
                                 Theme::Role::critical};

class ThemeContrast : public testing::TestWithParam<bool> {
protected:
    ThemeContrast() { theme.setDark(GetParam()); }
    Theme theme;
};

TEST_P(ThemeContrast, keepsTextReadableOnEveryBackground) {
    for (const Theme::Role role : roles)
        for (const QColor background : backgrounds(theme))
            EXPECT_GE(contrast(theme.textColor(role), background), 4.5)
                << "role " << int(role) << " on " << qPrintable(background.name());
    EXPECT_GE(contrast(theme.onAccent(), theme.accent()), 4.5);
}

TEST_P(ThemeContrast, keepsSymbolsVisibleOnEveryBackground) {
    for (const Theme::Role role : roles)
        for (const QColor background : backgrounds(theme))
            EXPECT_GE(contrast(theme.color(role), background), 3)
                << "role " << int(role) << " on " << qPrintable(background.name());
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, ThemeContrast, testing::Bool());

TEST(Theme, tellsOfAChangeOnlyOnce) {
    Theme theme;
    int changes = 0;
    QObject::connect(&theme, &Theme::changed, &theme, [&] { ++changes; });

    theme.setDark(true);
    theme.setDark(true);

    EXPECT_EQ(changes, 1);
}

TEST(Theme, stopsAllMotionWhenLessIsAskedFor) {
    Theme theme;
    EXPECT_GT(theme.animationDuration(), 0);
    EXPECT_LE(theme.animationDuration(), 200);

    theme.setReduceMotion(true);

    EXPECT_EQ(theme.animationDuration(), 0);
}

TEST(Symbols, allHaveAnOutlineInTheirSquare) {
    for (const QString& name : Symbols::names()) {
        const QRectF bounds = Symbols::outline(name).boundingRect();
        EXPECT_GT(bounds.width() * bounds.height(), 0.01) << qPrintable(name);
        EXPECT_TRUE(QRectF(0, 0, 1, 1).contains(bounds)) << qPrintable(name);
    }
}

} // namespace
} // namespace tallyglass
