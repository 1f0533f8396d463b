#include "platform/linux/drawing/ShownText.h"

namespace ovin {
namespace {

QString withoutMiddle(const QString& text, qsizetype longest) {
    QString start = text.left(longest / 2);
    QString end = text.right(longest / 2 - 1);
    // Half a character is none.
    if (start.back().isHighSurrogate()) start.chop(1);
    if (end.front().isLowSurrogate()) end.remove(0, 1);
    return start + QChar(0x2026) + end;
}

}  // namespace

QString shownText(const QString& text, qsizetype longest) {
    QString shown = text.size() <= longest ? text : withoutMiddle(text, longest);
    for (QChar& character : shown) {
        const auto category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            character = QLatin1Char(' ');
    }
    return shown;
}

}  // namespace ovin
