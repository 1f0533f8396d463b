#include "platform/macos/updates/UpdateRule.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace ovin {
namespace {

/// A bundle that holds texts alone.
class Bundle final : public Resources {
public:
    explicit Bundle(std::map<std::string, std::string, std::less<>> texts) : texts_(std::move(texts)) {}

    [[nodiscard]] std::optional<Picture> picture(std::string_view) const override { return std::nullopt; }
    [[nodiscard]] const Words& words() const override { return macWords(); }
    [[nodiscard]] Image applicationIcon() const override { return Image(std::make_shared<Image::Content>()); }
    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override {
        const auto found = texts_.find(key);
        return found == texts_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    const std::map<std::string, std::string, std::less<>> texts_;
};

const std::map<std::string, std::string, std::less<>> whole{
    {"CFBundleIdentifier", "org.ovin.Ovin"}, {"CFBundleVersion", "1"}, {"SUPublicEDKey", "a2V5"}};

TEST(UpdateRule, ABundleWithIdentifierBuildAndKeyCanUpdate) { EXPECT_TRUE(canUpdate(Bundle(whole))); }

TEST(UpdateRule, ABundleThatLacksOneOfThemCannot) {
    for (const auto& [key, text] : whole) {
        auto without = whole;
        without.erase(key);
        EXPECT_FALSE(canUpdate(Bundle(without))) << key;
        auto empty = whole;
        empty[key] = "";
        EXPECT_FALSE(canUpdate(Bundle(empty))) << key;
    }
}

TEST(UpdateRule, AProgramWithoutItsBundleCannot) { EXPECT_FALSE(canUpdate(Bundle({}))); }

}  // namespace
}  // namespace ovin
