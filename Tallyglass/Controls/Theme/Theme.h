// The look of the program: colours by role, font sizes, the grid and the duration of animations. QML takes
// all colours and sizes from here.
//
// Main thread only. Follows the desktop while the program runs: light or dark, the size of text, less motion.
// The contrast to every background is at least 4.5 : 1 for text, and 3 : 1 for symbols and lines with a
// meaning.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>

class QQmlEngine;

namespace tallyglass {

class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY changed)
    Q_PROPERTY(bool reduceMotion READ reducesMotion WRITE setReduceMotion NOTIFY changed)
    Q_PROPERTY(bool differentiateWithoutColor READ differentiatesWithoutColor WRITE
                   setDifferentiateWithoutColor NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY changed)

    /// The colours of symbols and shapes, and of text, by role:
    /// `Theme.colors[content.role]`.
    Q_PROPERTY(QList<QColor> colors READ colors NOTIFY changed)
    Q_PROPERTY(QList<QColor> textColors READ textColors NOTIFY changed)

    /// Distinct colours of shapes, for things that have a number; beyond the last they begin again.
    Q_PROPERTY(QList<QColor> seriesColors READ seriesColors NOTIFY changed)

    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentSoft READ accentSoft NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed) ///< text on the accent
    Q_PROPERTY(QColor healthy READ healthy NOTIFY changed)
    Q_PROPERTY(QColor warning READ warning NOTIFY changed)
    Q_PROPERTY(QColor critical READ critical NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed)
    Q_PROPERTY(QColor windowBackground READ windowBackground NOTIFY changed)
    Q_PROPERTY(QColor sidebarBackground READ sidebarBackground NOTIFY changed)
    Q_PROPERTY(QColor cardBackground READ cardBackground NOTIFY changed)
    Q_PROPERTY(QColor controlBackground READ controlBackground NOTIFY changed)
    Q_PROPERTY(QColor hoverBackground READ hoverBackground NOTIFY changed) ///< of a control under the pointer
    Q_PROPERTY(QColor selectedBackground READ selectedBackground NOTIFY changed)
    Q_PROPERTY(QColor line READ line NOTIFY changed)     ///< borders of cards, dividers
    Q_PROPERTY(QColor track READ track NOTIFY changed)   ///< the unfilled part of a ring or a bar
    Q_PROPERTY(QColor scrim READ scrim NOTIFY changed)   ///< dims the window behind a sheet
    Q_PROPERTY(QColor shadow READ shadow NOTIFY changed) ///< of popups

    Q_PROPERTY(double unit READ unit CONSTANT)     ///< of the 8-point grid
    Q_PROPERTY(double radius READ radius CONSTANT) ///< of a card's corners
    Q_PROPERTY(double controlRadius READ controlRadius CONSTANT)
    Q_PROPERTY(double captionSize READ captionSize NOTIFY changed) ///< pixel sizes of text, scaled
    Q_PROPERTY(double bodySize READ bodySize NOTIFY changed)
    Q_PROPERTY(double headlineSize READ headlineSize NOTIFY changed)
    Q_PROPERTY(double titleSize READ titleSize NOTIFY changed)
    Q_PROPERTY(double displaySize READ displaySize NOTIFY changed)
    Q_PROPERTY(double symbolSize READ symbolSize NOTIFY changed) ///< of a symbol beside text
    Q_PROPERTY(double controlHeight READ controlHeight NOTIFY changed)
    Q_PROPERTY(double rowHeight READ rowHeight NOTIFY changed) ///< of a list whose rows have two lines
    Q_PROPERTY(
        int animationDuration READ animationDuration NOTIFY changed) ///< milliseconds; 0 with reduced motion

public:
    /// The meaning of a colour. Content made in C++ has roles, which tests can check and every appearance can
    /// colour.
    enum class Role { text, secondaryText, accent, accentSoft, healthy, warning, critical };
    Q_ENUM(Role)

    explicit Theme(QObject* parent = nullptr);
    /// The theme of an engine.
    [[nodiscard]] static Theme* of(QQmlEngine& engine);

    [[nodiscard]] bool isDark() const { return m_dark; }
    [[nodiscard]] bool reducesMotion() const { return m_reduceMotion; }
    [[nodiscard]] bool differentiatesWithoutColor() const { return m_differentiateWithoutColor; }
    [[nodiscard]] double textScale() const { return m_textScale; }
    void setDark(bool dark);
    void setReduceMotion(bool reduce);
    void setDifferentiateWithoutColor(bool differentiate);
    /// 1 is the default size of text. Clamped to 0.5 to 3.
    void setTextScale(double scale);

    [[nodiscard]] QColor color(Role role) const;
    /// Like `color`, but darker or lighter where text in that colour would be hard to read.
    [[nodiscard]] QColor textColor(Role role) const;
    [[nodiscard]] QList<QColor> colors() const;
    [[nodiscard]] QList<QColor> textColors() const;

    [[nodiscard]] QList<QColor> seriesColors() const;
    [[nodiscard]] QColor accent() const { return color(Role::accent); }
    [[nodiscard]] QColor accentSoft() const { return color(Role::accentSoft); }
    [[nodiscard]] QColor healthy() const { return color(Role::healthy); }
    [[nodiscard]] QColor warning() const { return color(Role::warning); }
    [[nodiscard]] QColor critical() const { return color(Role::critical); }
    [[nodiscard]] QColor text() const { return color(Role::text); }
    [[nodiscard]] QColor secondaryText() const { return color(Role::secondaryText); }
    [[nodiscard]] QColor onAccent() const;
    [[nodiscard]] QColor windowBackground() const;
    [[nodiscard]] QColor sidebarBackground() const;
    [[nodiscard]] QColor cardBackground() const;
    [[nodiscard]] QColor controlBackground() const;
    [[nodiscard]] QColor hoverBackground() const;
    [[nodiscard]] QColor selectedBackground() const;
    [[nodiscard]] QColor line() const;
    [[nodiscard]] QColor track() const;
    [[nodiscard]] QColor scrim() const;
    [[nodiscard]] QColor shadow() const;

    [[nodiscard]] double unit() const { return 8; }
    [[nodiscard]] double radius() const { return 12; }
    [[nodiscard]] double controlRadius() const { return 7; }
    [[nodiscard]] double captionSize() const { return 12 * m_textScale; }
    [[nodiscard]] double bodySize() const { return 13 * m_textScale; }
    [[nodiscard]] double headlineSize() const { return 15 * m_textScale; }
    [[nodiscard]] double titleSize() const { return 20 * m_textScale; }
    [[nodiscard]] double displaySize() const { return 26 * m_textScale; }
    [[nodiscard]] double symbolSize() const { return bodySize() * 1.4; }
    [[nodiscard]] double controlHeight() const { return 14 + 18 * m_textScale; }
    [[nodiscard]] double rowHeight() const;
    [[nodiscard]] int animationDuration() const { return m_reduceMotion ? 0 : 180; }

signals:
    void changed();

private:
    template <typename Value>
    void set(Value& field, Value value);
    /// The light or the dark variant.
    [[nodiscard]] QColor variant(QColor light, QColor dark) const { return m_dark ? dark : light; }

    bool m_dark = false;
    bool m_reduceMotion = false;
    bool m_differentiateWithoutColor = false;
    double m_textScale = 1;
};

} // namespace tallyglass
