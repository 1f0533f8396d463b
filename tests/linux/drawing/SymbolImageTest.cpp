#include "platform/linux/drawing/SymbolImage.h"

#include <gtest/gtest.h>

namespace ovin {
namespace {

QPalette paletteOf(const QColor& text) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

TEST(SymbolImage, TheDiscIsInTheTextColourAndTheCheckMarkIsCutOut) {
    for (const QColor text : {QColor(Qt::black), QColor(Qt::white)}) {
        for (const int scale : {1, 2}) {
            const QImage image = symbolImage("checkmark.circle.fill", scale, paletteOf(text));
            EXPECT_EQ(image.size(), QSize(18, 18) * scale);
            EXPECT_EQ(image.pixelColor(9 * scale, 3 * scale), text);
            EXPECT_LT(image.pixelColor(8 * scale, 11 * scale).alpha(), 100);
            EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
        }
    }
}

TEST(SymbolImage, UnknownNamesHaveNone) {
    for (const char* name : {"", "checkmark", "checkmark.circle", "checkmark.circle.fill "}) {
        EXPECT_TRUE(symbolImage(name, 1, QPalette()).isNull());
    }
}

}  // namespace
}  // namespace ovin
