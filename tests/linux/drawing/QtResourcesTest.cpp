#include "platform/linux/drawing/QtResources.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QIcon>

#include "platform/linux/drawing/QtIcons.h"

namespace ovin {
namespace {

TEST(QtResources, TheIconIsThereInEverySizeThatDesktopsAskFor) {
    const QIcon icon = qtIcon(QtResources().applicationIcon());
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;
        const QImage picture = icon.pixmap(side, side).toImage();
        EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0) << side;
        // The square in the middle.
        EXPECT_GT(picture.pixelColor(side / 2, side * 2 / 5).red(), 200) << side;
        EXPECT_LT(picture.pixelColor(side / 2, side * 2 / 5).blue(), 120) << side;
    }
}

TEST(QtResources, WindowsAreGivenNoSizeOfTheIconThatWindowManagersDoNotShow) {
    const QIcon icon = ownWindowIcon();
    EXPECT_FALSE(icon.isNull());
    QSize largest;
    for (const QSize size : icon.availableSizes()) largest = largest.expandedTo(size);
    EXPECT_EQ(largest, QSize(128, 128));
    EXPECT_EQ(icon.pixmap(QSize(48, 48), 1).size(), QSize(48, 48));
    EXPECT_EQ(icon.pixmap(QSize(48, 48), 2).size(), QSize(96, 96));
    const QIcon whole = qtIcon(QtResources().applicationIcon());
    EXPECT_EQ(icon.pixmap(QSize(64, 64), 1).toImage(), whole.pixmap(QSize(64, 64), 1).toImage());
}

TEST(QtResources, APictureHasTwoPixelsForEachPointAndIsEqualToItself) {
    const QtResources resources;
    const auto picture = resources.picture("Ovin");
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size, (Size{256, 256}));
    EXPECT_TRUE(resources.picture("Ovin")->image == picture->image);
    EXPECT_TRUE(qtIcon(picture->image).availableSizes().contains(QSize(512, 512)));
}

TEST(QtResources, APictureThatIsMissingIsNone) {
    const QtResources resources;
    for (const char* name : {"no-such-picture", "", "../icon/16", "../pictures/Ovin", "Ovin.png"}) {
        EXPECT_FALSE(resources.picture(name)) << name;
    }
}

TEST(QtResources, APictureThatCannotBeReadIsNone) {
    ASSERT_TRUE(QFile::exists(":/ovin/pictures/broken.png"));
    EXPECT_FALSE(QtResources().picture("broken"));
}

TEST(QtResources, TheVersionIsThatOfTheBuild) {
    const QtResources resources;
    EXPECT_EQ(resources.infoString("CFBundleShortVersionString"), OVIN_VERSION);
    EXPECT_EQ(resources.infoString("CFBundleVersion"), OVIN_BUILD_NUMBER);
    EXPECT_EQ(resources.infoString("NoSuchKey"), std::nullopt);
    EXPECT_EQ(resources.infoString(""), std::nullopt);
}

}  // namespace
}  // namespace ovin
