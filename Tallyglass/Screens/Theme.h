// The look of the program: colours by role, the type scale, the grid and the pace of motion. QML takes
// colours and sizes from here and nowhere else.
//
// Main thread only. Follows the desktop while the program runs: light or dark, the size of text, less motion.

#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QString>

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

    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentSoft READ accentSoft NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed)
    Q_PROPERTY(QColor healthy READ healthy NOTIFY changed)
    Q_PROPERTY(QColor warning READ warning NOTIFY changed)
    Q_PROPERTY(QColor critical READ critical NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed)
    Q_PROPERTY(QColor windowGround READ windowGround NOTIFY changed)
    Q_PROPERTY(QColor sidebarGround READ sidebarGround NOTIFY changed)
    Q_PROPERTY(QColor cardGround READ cardGround NOTIFY changed)
    Q_PROPERTY(QColor line READ line NOTIFY changed) ///< borders of cards, dividers
    Q_PROPERTY(QColor controlGround READ controlGround NOTIFY changed)
    Q_PROPERTY(QColor hoverGround READ hoverGround NOTIFY changed)

    Q_PROPERTY(double unit READ unit CONSTANT)     ///< of the 8-point grid
    Q_PROPERTY(double radius READ radius CONSTANT) ///< of a card's corners
    Q_PROPERTY(double controlRadius READ controlRadius CONSTANT)
    Q_PROPERTY(double captionSize READ captionSize NOTIFY changed) ///< pixel sizes of text, scaled
    Q_PROPERTY(double bodySize READ bodySize NOTIFY changed)
    Q_PROPERTY(double headlineSize READ headlineSize NOTIFY changed)
    Q_PROPERTY(double titleSize READ titleSize NOTIFY changed)
    Q_PROPERTY(double displaySize READ displaySize NOTIFY changed)
    Q_PROPERTY(int motion READ motion NOTIFY changed) ///< milliseconds of a transition, 0 without motion
    Q_PROPERTY(QString symbolFont READ symbolFont CONSTANT)

public:
    explicit Theme(QObject* parent = nullptr);

    [[nodiscard]] bool isDark() const { return m_dark; }
    [[nodiscard]] bool reducesMotion() const { return m_reduceMotion; }
    [[nodiscard]] bool differentiatesWithoutColor() const { return m_differentiateWithoutColor; }
    [[nodiscard]] double textScale() const { return m_textScale; }
    void setDark(bool dark);
    void setReduceMotion(bool reduce);
    void setDifferentiateWithoutColor(bool differentiate);
    void setTextScale(double scale);

    [[nodiscard]] QColor accent() const;
    [[nodiscard]] QColor accentSoft() const;
    [[nodiscard]] QColor onAccent() const;
    [[nodiscard]] QColor healthy() const;
    [[nodiscard]] QColor warning() const;
    [[nodiscard]] QColor critical() const;
    [[nodiscard]] QColor text() const;
    [[nodiscard]] QColor secondaryText() const;
    [[nodiscard]] QColor windowGround() const;
    [[nodiscard]] QColor sidebarGround() const;
    [[nodiscard]] QColor cardGround() const;
    [[nodiscard]] QColor line() const;
    [[nodiscard]] QColor controlGround() const;
    [[nodiscard]] QColor hoverGround() const;

    [[nodiscard]] double unit() const { return 8; }
    [[nodiscard]] double radius() const { return 12; }
    [[nodiscard]] double controlRadius() const { return 6; }
    [[nodiscard]] double captionSize() const { return 11 * m_textScale; }
    [[nodiscard]] double bodySize() const { return 13 * m_textScale; }
    [[nodiscard]] double headlineSize() const { return 15 * m_textScale; }
    [[nodiscard]] double titleSize() const { return 20 * m_textScale; }
    [[nodiscard]] double displaySize() const { return 28 * m_textScale; }
    [[nodiscard]] int motion() const { return m_reduceMotion ? 0 : 180; }
    [[nodiscard]] QString symbolFont() const { return m_symbolFont; }

signals:
    void changed();

private:
    template <typename Value>
    void set(Value& field, Value value);

    bool m_dark = false;
    bool m_reduceMotion = false;
    bool m_differentiateWithoutColor = false;
    double m_textScale = 1;
    QString m_symbolFont;
};

} // namespace tallyglass
