#include "platform/linux/updates/FeedText.h"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace ovin {
namespace {

/// The namespace of the macOS framework, and its separator from a name: a character that XML cannot contain.
constexpr std::string_view sparkle = "http://www.andymatuschak.org/xml-namespaces/sparkle\f";
constexpr int deepest = 32;
/// Longer texts are neither versions nor addresses that anybody would open.
constexpr std::size_t longestText = 2048;
constexpr std::size_t mostItems = 1000;

bool isSparkle(std::string_view name, std::string_view local) {
    return name.starts_with(sparkle) && name.substr(sparkle.size()) == local;
}

void trim(std::string& text) {
    constexpr std::string_view space = " \t\r\n";
    text.erase(text.find_last_not_of(space) + 1);
    text.erase(0, std::min(text.find_first_not_of(space), text.size()));
}

class Reader {
public:
    std::optional<std::vector<FeedItem>> read(std::string_view text) {
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(), [](void* self, const char* name, const char** attributes) { of(self).begin(name, attributes); },
            [](void* self, const char*) { of(self).end(); });
        XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* characters, int count) {
            of(self).append({characters, static_cast<std::size_t>(count)});
        });
        XML_SetStartDoctypeDeclHandler(parser_.get(),
                                       [](void* self, const char*, const char*, const char*, int) { of(self).refuse(); });
        const auto status = XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
        if (status != XML_STATUS_OK) return std::nullopt;
        return std::move(items_);
    }

private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    static Reader& of(void* self) { return *static_cast<Reader*>(self); }

    void refuse() { XML_StopParser(parser_.get(), XML_FALSE); }

    /// Items are in "channel", which is in the root, "rss".
    void begin(std::string_view name, const char** attributes) {
        ++depth_;
        if (depth_ > deepest || (depth_ == 1 && name != "rss")) return refuse();
        if (depth_ == 2) isInChannel_ = name == "channel";
        if (depth_ == 3) {
            isInItem_ = isInChannel_ && name == "item";
            item_ = {};
            channel_.clear();
            isForLinux_ = false;
        }
        if (depth_ != 4 || !isInItem_) return;
        text_ = fieldNamed(name);
        if (text_ != nullptr) text_->clear();
        if (name == "enclosure") readEnclosure(attributes);
    }

    std::string* fieldNamed(std::string_view name) {
        if (isSparkle(name, "version")) return &item_.version;
        if (isSparkle(name, "shortVersionString")) return &item_.shortVersion;
        if (isSparkle(name, "channel")) return &channel_;
        return name == "link" ? &item_.link : nullptr;
    }

    /// Versions may also stand here; separate elements take precedence, in whichever order they come.
    void readEnclosure(const char** attributes) {
        for (; *attributes != nullptr; attributes += 2) {
            const std::string_view name = attributes[0];
            const std::string_view value = attributes[1];
            if (isSparkle(name, "os")) isForLinux_ = value == "linux";
            if (isSparkle(name, "version") && item_.version.empty()) item_.version = value;
            if (isSparkle(name, "shortVersionString") && item_.shortVersion.empty()) item_.shortVersion = value;
        }
    }

    /// Leaves out the text of elements within.
    void append(std::string_view characters) {
        if (text_ != nullptr && depth_ == 4 && text_->size() <= longestText) *text_ += characters;
    }

    void end() {
        if (depth_ == 4) text_ = nullptr;
        if (depth_ == 3 && isInItem_) addItem();
        --depth_;
    }

    void addItem() {
        for (std::string* const text : {&item_.version, &item_.shortVersion, &item_.link, &channel_}) {
            if (text->size() > longestText) return;
            trim(*text);
        }
        if (isForLinux_ && channel_.empty() && items_.size() < mostItems) items_.push_back(std::move(item_));
    }

    const std::unique_ptr<XML_ParserStruct, Free> parser_{XML_ParserCreateNS(nullptr, sparkle.back())};
    std::vector<FeedItem> items_;
    FeedItem item_;
    std::string channel_;
    bool isForLinux_ = false;
    /// Where the text of the present element goes.
    std::string* text_ = nullptr;
    int depth_ = 0;
    bool isInChannel_ = false;
    bool isInItem_ = false;
};

}  // namespace

std::optional<std::vector<FeedItem>> readFeed(std::string_view text) { return Reader().read(text); }

}  // namespace ovin
