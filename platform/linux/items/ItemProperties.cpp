#include "platform/linux/items/ItemProperties.h"

#include <array>
#include <utility>

#include "platform/linux/system/BusNames.h"

namespace ovin {
namespace {

constexpr std::array interfaceNames{"org.kde.StatusNotifierItem", "org.freedesktop.StatusNotifierItem"};
constexpr std::array propertyNames{"Id",
                                   "Title",
                                   "ToolTip",
                                   "IconAccessibleDesc",
                                   "Menu",
                                   "ItemIsMenu",
                                   "Status",
                                   "IconName",
                                   "IconThemePath",
                                   "IconPixmap",
                                   "AttentionIconName",
                                   "AttentionIconPixmap",
                                   "OverlayIconName",
                                   "OverlayIconPixmap"};
constexpr int attempts = 2 * static_cast<int>(interfaceNames.size());

/// An item without a menu names this path, the root path or none.
constexpr const char* noMenu = "/NO_DBUSMENU";

void dropBytes(BusValue& value) {
    if (value.as<BusValue::Bytes>() != nullptr) value = {};
    if (auto* members = std::get_if<BusValue::Array>(&value.content)) {
        for (BusValue& member : *members) dropBytes(member);
    }
}

const char* interfaceOf(int attempt) { return interfaceNames[static_cast<std::size_t>(attempt) % interfaceNames.size()]; }

}  // namespace

std::shared_ptr<ItemProperties> ItemProperties::request(Bus& bus, const StatusNotifierItem& item) {
    std::shared_ptr<ItemProperties> request(new ItemProperties(bus, item));
    request->attempt(0);
    return request;
}

void ItemProperties::attempt(int attempt) {
    const bool knowsGetAll = attempt < static_cast<int>(interfaceNames.size());
    knowsGetAll ? askForAll(attempt) : askForEach(attempt);
}

void ItemProperties::askForAll(int attempt) {
    bus_.call(
        {item_.address.destination, item_.address.path, "org.freedesktop.DBus.Properties", "GetAll", {interfaceOf(attempt)}},
        abandonedCallTimeout, [self = shared_from_this(), attempt](BusReply reply) {
            BusValue all = std::move(reply).first();
            if (auto* properties = std::get_if<BusValue::Dictionary>(&all.content))
                self->properties_ = std::move(*properties);
            self->collected(attempt, reply.error);
        });
}

void ItemProperties::askForEach(int attempt) {
    outstanding_ = static_cast<int>(propertyNames.size());
    for (const std::string name : propertyNames) {
        bus_.call(propertyCall(item_.address.destination, item_.address.path, interfaceOf(attempt), name),
                  abandonedCallTimeout, [self = shared_from_this(), attempt, name](const BusReply& reply) {
                      if (!reply.isError()) self->properties_[name] = reply.first();
                      if (--self->outstanding_ == 0) self->collected(attempt, reply.error);
                  });
    }
}

void ItemProperties::collected(int attempt, const std::string& error) {
    // A program that does not answer is not asked in the other ways.
    const bool isSilent = error == noReplyError;
    if (properties_.empty() && !isSilent && attempt + 1 < attempts) return this->attempt(attempt + 1);
    interface_ = interfaceOf(attempt);
    if (properties_.empty())
        error_ = error;
    else
        keep();
    finish();
}

/// Keeps the item's icon if it is shown, and drops all other pictures of the message to save memory.
void ItemProperties::keep() {
    item_.traits->set(traits());
    if (item_.icon) item_.icon->set(itemIcon(properties_));
    for (auto& [name, value] : properties_) dropBytes(value);
}

const BusValue& ItemProperties::property(const std::string& name) const {
    static const BusValue missing;
    const auto found = properties_.find(name);
    return found == properties_.end() ? missing : found->second;
}

std::string ItemProperties::title() const { return property("Title").string(); }

std::string ItemProperties::description() const {
    // A tool tip is icon name, icon pictures, title and text; some programs give the text alone.
    const BusValue& toolTip = property("ToolTip");
    const BusValue::Array& parts = toolTip.members();
    std::string text = parts.size() == 4 ? parts[2].string() : toolTip.string();
    return !text.empty() ? text : property("IconAccessibleDesc").string();
}

StatusItemTraits ItemProperties::traits() const {
    const auto* status = property("Status").as<std::string>();
    return {interface_, property("Id").string(), status != nullptr && *status == "Passive", menu(), isMenu()};
}

std::optional<std::string> ItemProperties::menu() const {
    std::string path = property("Menu").string();
    if (!path.starts_with('/') || path == "/" || path == noMenu) return std::nullopt;
    return path;
}

std::optional<bool> ItemProperties::isMenu() const {
    const auto* value = property("ItemIsMenu").as<bool>();
    if (value == nullptr) return std::nullopt;
    return *value;
}

}  // namespace ovin
