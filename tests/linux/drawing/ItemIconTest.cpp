#include "platform/linux/drawing/ItemIcon.h"

#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QTemporaryDir>
#include <string>
#include <utility>

#include "platform/linux/drawing/ItemPicture.h"
#include "platform/linux/drawing/QtIcons.h"

namespace ovin {
namespace {

constexpr std::uint32_t colour = 0xFFC01090;

BusValue number(std::int64_t value) { return {value}; }

BusValue picture(std::int64_t width, std::int64_t height, std::size_t bytes) {
    BusValue::Bytes pixels;
    for (std::size_t i = 0; i < bytes; ++i) pixels.push_back(static_cast<std::uint8_t>(colour >> (24 - 8 * (i % 4)) & 0xFF));
    return {BusValue::Array{number(width), number(height), {std::move(pixels)}}};
}

BusValue squarePicture(std::int64_t side) { return picture(side, side, static_cast<std::size_t>(4 * side * side)); }

BusValue::Dictionary pictures(BusValue::Array list) { return {{"IconPixmap", {std::move(list)}}}; }

BusValue::Dictionary named(const std::string& name, const std::string& folder = {}) {
    return {{"IconName", {name}}, {"IconThemePath", {folder}}};
}

int sideOf(const BusValue::Dictionary& properties) {
    const auto icon = itemIcon(properties);
    return icon ? icon->pixels.width : 0;
}

/// What the ledge draws for an item.
QIcon shown(const BusValue::Dictionary& properties) { return qtIcon(Image(itemIcon(properties))); }

/// A theme without a generic icon, so that an icon that falls back to the generic one shows nothing.
bool isGeneric(const QIcon& icon) {
    return icon.pixmap(28).toImage() ==
           qtIcon(Image(std::make_shared<ItemIcon>("no-such-icon", "", ItemIcon::Pixels{}))).pixmap(28).toImage();
}

QString writePicture(const QTemporaryDir& folder, const QString& name) {
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(QColor::fromRgba(colour));
    const QString path = folder.filePath(name);
    EXPECT_TRUE(image.save(path, "PNG"));
    return path;
}

TEST(ItemIcon, ThePixelsOfAnItemAreDrawnInTheirColours) {
    const QImage drawn = shown(pictures({squarePicture(28)})).pixmap(28).toImage();
    EXPECT_EQ(drawn.pixelColor(14, 14), QColor::fromRgba(colour));
}

TEST(ItemIcon, ThePictureIsTheSmallestThatSufficesOrElseTheLargest) {
    EXPECT_EQ(sideOf(pictures({squarePicture(22), squarePicture(44)})), 44);
    EXPECT_EQ(sideOf(pictures({squarePicture(256), squarePicture(22), squarePicture(64), squarePicture(128)})), 64);
}

TEST(ItemIcon, PicturesOfImpossibleSizesAreNone) {
    for (const BusValue& bad :
         {picture(0, 0, 0), picture(-1, -1, 4), picture(22, 22, 5), picture(22, -22, 1936), picture(22, 22, 1935),
          picture(22, 22, 1937), squarePicture(513), picture(2147483647, 2147483647, 4), picture(65536, 16384, 0)}) {
        EXPECT_EQ(itemIcon(pictures({bad})), nullptr);
        EXPECT_EQ(sideOf(pictures({bad, squarePicture(22)})), 22);
    }
}

TEST(ItemIcon, WhatIsNoPictureIsNone) {
    const BusValue text{std::string("text")};
    EXPECT_EQ(itemIcon({}), nullptr);
    EXPECT_EQ(itemIcon({{"IconPixmap", text}}), nullptr);
    EXPECT_EQ(itemIcon(pictures({text, {BusValue::Array{}}, {BusValue::Array{text, text, text}}})), nullptr);
    EXPECT_EQ(itemIcon({{"IconName", number(7)}}), nullptr);
    EXPECT_EQ(itemIcon(named(std::string(100'000, 'x'))), nullptr);
}

TEST(ItemIcon, AnIconIsFoundInTheFolderThatComesWithIt) {
    const QTemporaryDir folder;
    writePicture(folder, "mail.png");
    const QImage drawn = shown(named("mail", folder.path().toStdString())).pixmap(16).toImage();
    EXPECT_EQ(drawn.pixelColor(8, 8), QColor::fromRgba(colour));
}

TEST(ItemIcon, ANameThatLeadsOutOfItsFolderFindsNothing) {
    const QTemporaryDir folder;
    writePicture(folder, "secret.png");
    ASSERT_TRUE(QDir(folder.path()).mkdir("theme"));
    const QString theme = folder.filePath("theme");
    EXPECT_FALSE(namedItemIcon(folder.filePath("secret.png"), {}).isNull());
    for (const char* name : {"../secret", "../secret.png", "./../secret", "..", "theme/../../secret"}) {
        EXPECT_TRUE(namedItemIcon(name, theme).isNull()) << name;
        EXPECT_TRUE(isGeneric(shown(named(name, theme.toStdString())))) << name;
    }
    EXPECT_TRUE(namedItemIcon("secret", ".").isNull());
}

TEST(ItemIcon, AFileThatIsNoPictureFallsBackToPixelsOrTheGenericIcon) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("broken.png"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture");
    file.close();
    auto properties = named(file.fileName().toStdString());
    EXPECT_TRUE(isGeneric(shown(properties)));
    EXPECT_TRUE(isGeneric(shown(named("/dev/zero"))));
    EXPECT_TRUE(isGeneric(shown(named(folder.path().toStdString()))));
    properties.merge(pictures({squarePicture(28)}));
    EXPECT_EQ(shown(properties).pixmap(28).toImage().pixelColor(14, 14), QColor::fromRgba(colour));
}

TEST(ItemIcon, AnIconThatLooksLikeTheLastOneLeavesItInPlace) {
    LatestItemIcon latest;
    EXPECT_EQ(latest.get(), nullptr);
    latest.set(itemIcon(named("mail")));
    const auto first = latest.get();
    latest.set(itemIcon(named("mail")));
    EXPECT_EQ(latest.get(), first);
    latest.set(itemIcon(named("mail-unread")));
    EXPECT_EQ(latest.get()->name, "mail-unread");
    latest.set(nullptr);
    EXPECT_EQ(latest.get(), nullptr);
}

}  // namespace
}  // namespace ovin
