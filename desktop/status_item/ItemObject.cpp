#include "desktop/status_item/ItemObject.h"

#include <limits>
#include <utility>

#include "desktop/status_item/ItemGlyph.h"
#include "desktop/status_item/MenuObject.h"

namespace ovin {
namespace {

constexpr auto introspectionHead = R"xml(<!DOCTYPE node PUBLIC "-//freedesktop//DTD D-BUS Object Introspection 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd">
<node>
)xml";
constexpr auto introspectionMethods =
    R"xml(  <method name="Activate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
  <method name="SecondaryActivate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
  <method name="ContextMenu"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
  <method name="Scroll"><arg name="delta" type="i" direction="in"/><arg name="orientation" type="s" direction="in"/></method>
  <signal name="NewTitle"/>
 </interface>
</node>
)xml";

constexpr auto picturesType = "a(iiay)";
constexpr auto toolTipType = "(sa(iiay)ss)";
constexpr std::int32_t pictureSides[] = {22, 44};

/// "Mail", "Mail 2", "Mail 3" …: the first item bears the plain name.
std::string numbered(const std::string& name, std::size_t number, const char* gap) {
    return number == 1 ? name : name + gap + std::to_string(number);
}

/// An item without a title of its own bears the first one with its number.
std::string titleOf(const ItemOptions& options, std::size_t number) {
    if (options.titles.empty()) return numbered(options.id, number, " ");
    return number <= options.titles.size() ? options.titles[number - 1] : numbered(options.titles.front(), number, " ");
}

void writePicture(MessageWriter& writer, std::int32_t width, std::int32_t height, std::span<const std::uint8_t> bytes) {
    writer.container('r', "iiay", [&] {
        writer.number(width);
        writer.number(height);
        writer.bytes(bytes);
    });
}

std::function<void(MessageWriter&)> textOf(std::string text) {
    return [text = std::move(text)](MessageWriter& writer) { writer.text(text); };
}

void writeImpossiblePictures(MessageWriter& writer) {
    const std::vector<std::uint8_t> fewBytes(5, 0x7F);
    constexpr auto most = std::numeric_limits<std::int32_t>::max();
    writer.container('a', "(iiay)", [&] {
        writePicture(writer, 22, 22, fewBytes);
        writePicture(writer, 0, 0, {});
        writePicture(writer, -1, most, fewBytes);
        writePicture(writer, most, most, fewBytes);  // 4 · width · height overflows
    });
}

ItemGlyph drawnGlyph(std::int32_t side, const ItemOptions& options, std::size_t number) {
    if (!options.glyph.empty()) return drawItemPictogram(side, *options.pixmapColour, options.glyph);
    return drawItemGlyph(side, *options.pixmapColour, number - 1);
}

void writeHugePictures(MessageWriter& writer, const ItemOptions& options) {
    constexpr std::int32_t side = 512;
    const auto glyph = drawItemGlyph(side, *options.pixmapColour, 0);
    for (std::size_t i = 0; i < options.hugePictures; ++i) writePicture(writer, side, side, glyph.bytes);
}

}  // namespace

ItemObject::ItemObject(const ItemOptions& options, std::size_t number, std::function<void(const std::string&)> print)
    : options_(options),
      number_(number),
      print_(std::move(print)),
      path_(numbered("/StatusNotifierItem", number, "/")),
      id_(numbered(options.id, number, "-")),
      title_(titleOf(options, number)),
      toolTip_(options.toolTip.value_or("")) {
    if (options.hugeBytes == 0) return;
    title_.assign(options.hugeBytes, 'T');
    toolTip_.assign(options.hugeBytes, 't');
}

int ItemObject::answer(sd_bus_message* call) {
    const bool ofItem = sd_bus_message_is_method_call(call, options_.interface.c_str(), nullptr) > 0;
    if (ofItem && !options_.noActivate) return answerMethod(call);
    if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Properties", nullptr) > 0) return answerProperties(call);
    if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Introspectable", "Introspect") > 0) {
        std::string description = introspectionHead + (" <interface name=\"" + options_.interface + "\">\n");
        for (const auto& property : properties())
            description +=
                std::string("  <property name=\"") + property.name + "\" type=\"" + property.type + "\" access=\"read\"/>\n";
        return sd_bus_reply_method_return(call, "s", (description + introspectionMethods).c_str());
    }
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "The item has no such method");
}

void ItemObject::changeTitle(sd_bus* bus, std::string title) {
    title_ = std::move(title);
    sd_bus_emit_signal(bus, path_.c_str(), options_.interface.c_str(), "NewTitle", "");
}

std::vector<ItemObject::Property> ItemObject::properties() const {
    std::vector<Property> list{{"Id", "s", textOf(id_)}};
    if (options_.missing) return list;
    if (options_.garbage) return addGarbage(list), list;
    addPlain(list);
    addPictures(list);
    addMenu(list);
    return list;
}

void ItemObject::addPlain(std::vector<Property>& list) const {
    list.push_back({"Category", "s", textOf("ApplicationStatus")});
    list.push_back({"Title", "s", textOf(title_)});
    list.push_back({"Status", "s", textOf(options_.status)});
    list.push_back({"WindowId", "i", [](MessageWriter& writer) { writer.number(0); }});
    if (toolTip_.empty()) return;
    list.push_back({"ToolTip", toolTipType, [toolTip = toolTip_](MessageWriter& writer) {
                        writer.container('r', "sa(iiay)ss", [&] {
                            writer.text("");
                            writer.container('a', "(iiay)", [] {});
                            writer.text(toolTip);
                            writer.text("");
                        });
                    }});
}

void ItemObject::addPictures(std::vector<Property>& list) const {
    list.push_back({"IconName", "s", textOf(options_.icon)});
    if (!options_.pixmapColour) return;
    list.push_back({"IconPixmap", picturesType, [this](MessageWriter& writer) {
                        writer.container('a', "(iiay)", [&] {
                            if (options_.hugePictures > 0) return writeHugePictures(writer, options_);
                            for (const auto side : pictureSides) {
                                const auto glyph = drawnGlyph(side, options_, number_);
                                writePicture(writer, side, side, glyph.bytes);
                            }
                        });
                    }});
}

void ItemObject::addMenu(std::vector<Property>& list) const {
    if (options_.itemIsMenu)
        list.push_back(
            {"ItemIsMenu", "b", [value = *options_.itemIsMenu](MessageWriter& writer) { writer.boolean(value); }});
    if (!options_.menu.empty()) list.push_back({"Menu", "o", [](MessageWriter& writer) { writer.path(MenuObject::path); }});
}

/// Every mistake that a program may make with the types. The Id stays right, to tell whose garbage this is.
void ItemObject::addGarbage(std::vector<Property>& list) {
    list.push_back({"Category", "d", [](MessageWriter& writer) { writer.real(0.5); }});
    list.push_back({"Title", "i", [](MessageWriter& writer) { writer.number(42); }});
    list.push_back({"Status", "u", [](MessageWriter& writer) { writer.unsignedNumber(7); }});
    list.push_back({"WindowId", "s", textOf("none")});
    list.push_back({"ToolTip", "s", textOf("a plain text")});
    list.push_back({"IconName", "b", [](MessageWriter& writer) { writer.boolean(true); }});
    list.push_back({"IconPixmap", picturesType, writeImpossiblePictures});
    list.push_back({"ItemIsMenu", "s", textOf("yes")});
    list.push_back({"Menu", "s", textOf("no path at all")});
}

int ItemObject::answerProperties(sd_bus_message* call) {
    const char* interface = nullptr;
    if (const int error = sd_bus_message_read_basic(call, 's', &interface); error < 0) return error;
    const bool known = options_.interface == interface;
    if (sd_bus_message_is_method_call(call, nullptr, "GetAll") > 0 && !options_.noGetAll) {
        if (!known) return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_INTERFACE, "No interface %s", interface);
        return answerGetAll(call);
    }
    if (sd_bus_message_is_method_call(call, nullptr, "Get") > 0) {
        const char* name = nullptr;
        if (const int error = sd_bus_message_read_basic(call, 's', &name); error < 0) return error;
        if (!known) return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_INTERFACE, "No interface %s", interface);
        return answerGet(call, name);
    }
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "The item has no such method");
}

int ItemObject::answerGet(sd_bus_message* call, const std::string& name) {
    for (const auto& property : properties()) {
        if (name != property.name) continue;
        sd_bus_message* made = nullptr;
        const int error = sd_bus_message_new_method_return(call, &made);
        const Message message(made);
        MessageWriter writer(made, error);
        writer.container('v', property.type, [&] { property.write(writer); });
        return writer.send();
    }
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_PROPERTY, "The item has no property %s", name.c_str());
}

int ItemObject::answerGetAll(sd_bus_message* call) {
    sd_bus_message* made = nullptr;
    const int error = sd_bus_message_new_method_return(call, &made);
    const Message message(made);
    MessageWriter writer(made, error);
    writer.container('a', "{sv}", [&] {
        for (const auto& property : properties()) {
            writer.container('e', "sv", [&] {
                writer.text(property.name);
                writer.container('v', property.type, [&] { property.write(writer); });
            });
        }
    });
    return writer.send();
}

int ItemObject::answerMethod(sd_bus_message* call) {
    const auto isCall = [&](const char* member) { return sd_bus_message_is_method_call(call, nullptr, member) > 0; };
    if (isCall("Activate")) return answerWithPosition(call, "activate");
    if (isCall("SecondaryActivate")) return answerWithPosition(call, "secondary-activate");
    if (isCall("ContextMenu")) return answerWithPosition(call, "context-menu");
    if (isCall("Scroll")) return answerScroll(call);
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "The item has no such method");
}

int ItemObject::answerWithPosition(sd_bus_message* call, const char* event) {
    std::int32_t x = 0;
    std::int32_t y = 0;
    if (const int error = sd_bus_message_read(call, "ii", &x, &y); error < 0) return error;
    print_(std::string(event) + " " + std::to_string(x) + " " + std::to_string(y));
    return sd_bus_reply_method_return(call, "");
}

int ItemObject::answerScroll(sd_bus_message* call) {
    std::int32_t delta = 0;
    const char* orientation = nullptr;
    if (const int error = sd_bus_message_read(call, "is", &delta, &orientation); error < 0) return error;
    print_("scroll " + std::to_string(delta) + " " + orientation);
    return sd_bus_reply_method_return(call, "");
}

}  // namespace ovin
