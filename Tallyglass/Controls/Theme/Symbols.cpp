#include "Tallyglass/Controls/Theme/Symbols.h"

#include <QFont>
#include <QHash>
#include <QLoggingCategory>
#include <QPainter>
#include <QRawFont>
#include <QTransform>
#include <algorithm>

namespace tallyglass {

namespace {

struct Glyph {
    const char* name;
    char16_t codePoint;
};

// With the font's own name of each glyph.
constexpr Glyph glyphs[] = {
    {"arrow.clockwise", 0xE5D5},                                     // refresh
    {"arrow.clockwise.circle", 0xE2E7},                              // change_circle
    {"arrow.left.arrow.right", 0xE915},                              // compare_arrows
    {"arrow.left.arrow.right.square", 0xE3B9},                       // compare
    {"arrow.right", 0xE5C8},                                         // arrow_forward
    {"arrow.up.forward.app", 0xE895},                                // launch
    {"arrowtriangle.right.fill", 0xE037},                            // play_arrow
    {"checkmark", 0xE5CA},                                           // check
    {"checkmark.circle", 0xE92D},                                    // check_circle_outline
    {"checkmark.circle.fill", 0xE86C},                               // check_circle
    {"checkmark.shield.fill", 0xE8E8},                               // verified_user
    {"chevron.down", 0xE5CF},                                        // expand_more
    {"chevron.right", 0xE5CC},                                       // chevron_right
    {"circle.dotted", 0xE3A2},                                       // blur_circular
    {"clock.arrow.circlepath", 0xE889},                              // history
    {"clock.arrow.trianglehead.counterclockwise.rotate.90", 0xE8BA}, // settings_backup_restore
    {"clock.badge.exclamationmark", 0xE51D},                         // running_with_errors
    {"clock.badge.questionmark", 0xE88B},                            // hourglass_empty
    {"doc.on.doc", 0xE14D},                                          // content_copy
    {"exclamationmark", 0xE645},                                     // priority_high
    {"exclamationmark.octagon", 0xF052},                             // report_gmailerrorred
    {"exclamationmark.octagon.fill", 0xE160},                        // report
    {"exclamationmark.triangle", 0xF083},                            // warning_amber
    {"exclamationmark.triangle.fill", 0xE002},                       // warning
    {"externaldrive.badge.questionmark", 0xF1C0},                    // help_center
    {"externaldrive.connected.to.line.below.fill", 0xE875},          // dns
    {"externaldrive.fill", 0xE1DB},                                  // storage
    {"filemenu.and.pointer.arrow", 0xE2C8},                          // folder_open
    {"finder", 0xE880},                                              // find_in_page
    {"folder", 0xE2C7},                                              // folder
    {"gauge.with.dots.needle.33percent", 0xE9E4},                    // speed
    {"hand.draw", 0xE764},                                           // back_hand
    {"heart.fill", 0xE87D},                                          // favorite
    {"info.circle", 0xE88F},                                         // info_outline
    {"line.3.horizontal", 0xE5D2},                                   // menu
    {"list.bullet.indent", 0xE241},                                  // format_list_bulleted
    {"lock.badge.clock", 0xEF57},                                    // lock_clock
    {"lock.fill", 0xE897},                                           // lock
    {"lock.open.trianglebadge.exclamationmark", 0xE898},             // lock_open
    {"lock.shield", 0xE32A},                                         // security
    {"magnifyingglass", 0xE8B6},                                     // search
    {"minus", 0xE15B},                                               // remove
    {"minus.circle", 0xE15D},                                        // remove_circle_outline
    {"minus.circle.fill", 0xE15C},                                   // remove_circle
    {"nosign", 0xE14B},                                              // block
    {"pause.circle.fill", 0xE035},                                   // pause_circle_filled
    {"pencil.circle.fill", 0xE3C9},                                  // edit
    {"play.fill", 0xE037},                                           // play_arrow
    {"plus", 0xE145},                                                // add
    {"plus.circle.fill", 0xE147},                                    // add_circle
    {"questionmark.circle", 0xE8FD},                                 // help_outline
    {"questionmark.folder", 0xEB83},                                 // folder_off
    {"sparkles", 0xE65F},                                            // auto_awesome
    {"square.and.arrow.down", 0xE171},                               // save_alt
    {"square.and.arrow.up", 0xE6B8},                                 // ios_share
    {"square.grid.3x3.fill", 0xE5C3},                                // apps
    {"square.stack.3d.up", 0xE53B},                                  // layers
    {"star.fill", 0xE838},                                           // star
    {"stop.circle", 0xEF71},                                         // stop_circle
    {"switch.2", 0xE9F6},                                            // toggle_on
    {"terminal.fill", 0xEB8E},                                       // terminal
    {"timer", 0xE425},                                               // timer
    {"xmark", 0xE5CD},                                               // close
    {"xmark.circle.fill", 0xE5C9},                                   // cancel
};

constexpr double fontSize = 512; ///< pixels; coordinates of outlines are rounded to a 64th of one

/// The outline in a square whose sides are 1; empty if the font has no such character.
QPainterPath outlineOf(char16_t codePoint, const QRawFont& font) {
    const QList<quint32> indexes = font.glyphIndexesForString(QString(QChar(codePoint)));
    if (indexes.isEmpty() || indexes.front() == 0)
        return {};
    // Glyphs fill the em square, from the ascent downwards.
    return QTransform::fromScale(1 / fontSize, 1 / fontSize)
        .map(font.pathForGlyph(indexes.front()).translated(0, font.ascent()));
}

QHash<QString, QPainterPath> outlinesByName() {
    const QRawFont font(QStringLiteral(":/Tallyglass/Controls/Symbols.ttf"), fontSize,
                        QFont::PreferNoHinting);
    QHash<QString, QPainterPath> outlines;
    for (const Glyph& glyph : glyphs)
        outlines.insert(QString::fromLatin1(glyph.name), outlineOf(glyph.codePoint, font));
    return outlines;
}

} // namespace

QPainterPath Symbols::outline(const QString& name) {
    static const QHash<QString, QPainterPath> outlines = outlinesByName();
    if (name.isEmpty())
        return {};
    const auto found = outlines.constFind(name);
    if (found == outlines.constEnd()) {
        qWarning("There is no symbol \"%s\".", qUtf8Printable(name));
        return {};
    }
    return *found;
}

void Symbols::paint(QPainter& painter, const QString& name, const QRectF& box, const QColor& color) {
    const double size = std::min(box.width(), box.height());
    const QPointF corner = box.center() - QPointF(size, size) / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(QTransform::fromScale(size, size).map(outline(name)).translated(corner), color);
}

QStringList Symbols::names() {
    QStringList all;
    for (const Glyph& glyph : glyphs)
        all.append(QString::fromLatin1(glyph.name));
    return all;
}

} // namespace tallyglass
