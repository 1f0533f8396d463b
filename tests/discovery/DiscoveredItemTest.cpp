#include "discovery/DiscoveredItem.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

namespace ovin {
namespace {

/// An element that is nothing but its hash.
class HashOnly final : public AccessibilityElement::Reference {
public:
    explicit HashOnly(std::uint64_t hash) : hash_(hash) {}
    [[nodiscard]] bool isEqual(const Reference& other) const override {
        return static_cast<const HashOnly&>(other).hash_ == hash_;
    }
    [[nodiscard]] std::uint64_t hash() const override { return hash_; }

private:
    std::uint64_t hash_;
};

DiscoveredItem item(ProcessID pid, const std::string& title, std::uint64_t hash) {
    return {AccessibilityElement(std::make_shared<HashOnly>(hash)), "App", {}, title, pid, {}, {}};
}

TEST(DiscoveredItem, TheIdentityJoinsOwnerTitleAndHash) {
    EXPECT_EQ(item(512, "Wi-Fi", 1234567890).identity(), "512|Wi-Fi|1234567890");
}

TEST(DiscoveredItem, AnEmptyTitleKeepsBothSeparators) { EXPECT_EQ(item(512, "", 1234567890).identity(), "512||1234567890"); }

TEST(DiscoveredItem, TheTitleIsNotTrimmed) { EXPECT_EQ(item(1, " a|b\n", 2).identity(), "1| a|b\n|2"); }

TEST(DiscoveredItem, ANegativeOrZeroPidIsPrintedAsItIs) {
    EXPECT_EQ(item(-7, "", 1).identity(), "-7||1");
    EXPECT_EQ(item(0, "", 1).identity(), "0||1");
}

TEST(DiscoveredItem, TheHashIsPrintedUnsigned) { EXPECT_EQ(item(1, "", UINT64_MAX).identity(), "1||18446744073709551615"); }

TEST(DiscoveredItem, NameBundleAndLabelAreNoPartOfTheIdentity) {
    const DiscoveredItem one = item(1, "t", 2);
    DiscoveredItem other = one;
    other.appName = "Another";
    other.bundleID = "com.example.another";
    other.label = "label";
    EXPECT_EQ(other.identity(), one.identity());
}

TEST(DiscoveredItem, TwoItemsWithOneTitleAreToldApartByTheHash) {
    EXPECT_NE(item(1, "t", 2).identity(), item(1, "t", 3).identity());
}

}  // namespace
}  // namespace ovin
