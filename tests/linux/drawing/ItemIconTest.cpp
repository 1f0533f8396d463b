#include "platform/linux/drawing/ItemIcon.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <string>
#include <utility>

#include "platform/linux/drawing/LedgeIcon.h"

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

/// What the ledge draws of what an item has sent.
QImage shown(const BusValue::Dictionary& properties) {
    auto latest = std::make_shared<LatestItemIcon>(itemIcon(properties));
    return ledgeIcon(Image(std::make_shared<ItemOrApplicationIcon>(std::move(latest), "")), 28, Qt::black).value();
}

TEST(ItemIcon, ThePixelsOfAnItemAreDrawnInTheirColours) {
    const QImage drawn = shown(pictures({squarePicture(28)}));
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

TEST(ItemIcon, AnItemThatNeedsAttentionShowsWhatItHasForThat) {
    auto properties = pictures({squarePicture(28)});
    properties["AttentionIconPixmap"] = {BusValue::Array{squarePicture(32)}};
    EXPECT_EQ(sideOf(properties), 28);
    properties["Status"] = {std::string("NeedsAttention")};
    EXPECT_EQ(sideOf(properties), 32);
    properties["AttentionIconName"] = {std::string("alarm")};
    EXPECT_EQ(itemIcon(properties)->name, "alarm");
    properties.erase("AttentionIconName");
    properties.erase("AttentionIconPixmap");
    EXPECT_EQ(sideOf(properties), 28) << "it has nothing for that";
}

TEST(ItemIcon, AnOverlayLiesOnTheLowerRightQuarter) {
    auto properties = pictures({{BusValue::Array{number(2), number(2), {BusValue::Bytes(16, 0xFF)}}}});
    EXPECT_EQ(shown(properties).pixelColor(1, 1), QColor(Qt::white));
    properties["OverlayIconPixmap"] = {BusValue::Array{squarePicture(16)}};
    const QImage drawn = shown(properties);
    EXPECT_EQ(drawn.pixelColor(1, 1), QColor::fromRgba(colour));
    for (const QPoint point : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1)})
        EXPECT_EQ(drawn.pixelColor(point), QColor(Qt::white));
}

TEST(ItemIcon, AnOverlayThatChangesIsAnotherIcon) {
    LatestItemIcon latest;
    latest.set(itemIcon(named("mail")));
    const auto first = latest.get();
    auto properties = named("mail");
    properties["OverlayIconName"] = {std::string("unread")};
    latest.set(itemIcon(properties));
    EXPECT_NE(latest.get(), first);
}

TEST(ItemIcon, APictureThatCannotBeSeenIsNone) {
    const BusValue clear{BusValue::Array{number(2), number(2), {BusValue::Bytes(16, 0)}}};
    EXPECT_FALSE(itemIcon(pictures({clear})));
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
