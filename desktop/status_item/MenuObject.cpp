#include "desktop/status_item/MenuObject.h"

#include <algorithm>
#include <utility>

namespace ovin {
namespace {

constexpr auto introspection = R"xml(<!DOCTYPE node PUBLIC "-//freedesktop//DTD D-BUS Object Introspection 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd">
<node>
 <interface name="com.canonical.dbusmenu">
  <property name="Version" type="u" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="TextDirection" type="s" access="read"/>
  <property name="IconThemePath" type="as" access="read"/>
  <method name="GetLayout"><arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="as" direction="in"/>
   <arg type="u" direction="out"/><arg type="(ia{sv}av)" direction="out"/></method>
  <method name="GetGroupProperties"><arg type="ai" direction="in"/><arg type="as" direction="in"/>
   <arg type="a(ia{sv})" direction="out"/></method>
  <method name="GetProperty"><arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <method name="Event"><arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="in"/>
   <arg type="u" direction="in"/></method>
  <method name="EventGroup"><arg type="a(isvu)" direction="in"/><arg type="ai" direction="out"/></method>
  <method name="AboutToShow"><arg type="i" direction="in"/><arg type="b" direction="out"/></method>
  <method name="AboutToShowGroup"><arg type="ai" direction="in"/><arg type="ai" direction="out"/>
   <arg type="ai" direction="out"/></method>
  <signal name="LayoutUpdated"><arg type="u"/><arg type="i"/></signal>
 </interface>
</node>
)xml";

constexpr auto layoutType = "ia{sv}av";
constexpr auto separator = "-";

using Strings = std::vector<std::string>;

int readStrings(sd_bus_message* call, Strings& strings) {
    int result = sd_bus_message_enter_container(call, 'a', "s");
    for (const char* text = nullptr; result >= 0 && (result = sd_bus_message_read_basic(call, 's', &text)) > 0;)
        strings.emplace_back(text);
    return result < 0 ? result : sd_bus_message_exit_container(call);
}

int readNumbers(sd_bus_message* call, std::vector<std::int32_t>& numbers) {
    int result = sd_bus_message_enter_container(call, 'a', "i");
    for (std::int32_t number = 0; result >= 0 && (result = sd_bus_message_read_basic(call, 'i', &number)) > 0;)
        numbers.push_back(number);
    return result < 0 ? result : sd_bus_message_exit_container(call);
}

/// A method of the menu's interface answered with what `write` writes.
template <typename Write>
int reply(sd_bus_message* call, Write write) {
    sd_bus_message* made = nullptr;
    const int error = sd_bus_message_new_method_return(call, &made);
    const Message message(made);
    MessageWriter writer(made, error);
    write(writer);
    return writer.send();
}

int replyNoEntry(sd_bus_message* call, std::int32_t id) {
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_INVALID_ARGS, "The menu has no entry %d", id);
}

template <typename Write>
void writeDictEntry(MessageWriter& writer, const char* name, const char* type, Write write) {
    writer.container('e', "sv", [&] {
        writer.text(name);
        writer.container('v', type, write);
    });
}

void writeMenuProperty(MessageWriter& writer, const std::string& name) {
    if (name == "Version") return writer.container('v', "u", [&] { writer.unsignedNumber(3); });
    if (name == "Status") return writer.container('v', "s", [&] { writer.text("normal"); });
    if (name == "TextDirection") return writer.container('v', "s", [&] { writer.text("ltr"); });
    writer.container('v', "as", [&] { writer.container('a', "s", [] {}); });  // IconThemePath
}

const Strings menuProperties{"Version", "Status", "TextDirection", "IconThemePath"};

}  // namespace

MenuObject::MenuObject(Strings labels, Strings lateLabels, std::function<void(const std::string&)> onClick)
    : labels_(std::move(labels)), lateLabels_(std::move(lateLabels)), onClick_(std::move(onClick)) {}

int MenuObject::answer(sd_bus_message* call) {
    using Handler = int (MenuObject::*)(sd_bus_message*);
    static constexpr std::pair<const char*, Handler> handlers[] = {
        {"GetLayout", &MenuObject::answerLayout},
        {"GetGroupProperties", &MenuObject::answerGroupProperties},
        {"GetProperty", &MenuObject::answerProperty},
        {"Event", &MenuObject::answerEvent},
        {"EventGroup", &MenuObject::answerEventGroup},
        {"AboutToShow", &MenuObject::answerAboutToShow},
        {"AboutToShowGroup", &MenuObject::answerAboutToShowGroup},
    };
    for (const auto& [member, handler] : handlers)
        if (sd_bus_message_is_method_call(call, interface, member) > 0) return (this->*handler)(call);
    if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Properties", nullptr) > 0) return answerProperties(call);
    if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Introspectable", "Introspect") > 0)
        return sd_bus_reply_method_return(call, "s", introspection);
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "The menu has no such method");
}

void MenuObject::change(sd_bus* bus, const std::string& label) {
    firstId_ += static_cast<std::int32_t>(labels_.size());
    labels_.push_back(label);
    ++revision_;
    sd_bus_emit_signal(bus, path, interface, "LayoutUpdated", "ui", revision_, 0);
}

int MenuObject::answerProperties(sd_bus_message* call) {
    const char* ofInterface = nullptr;
    if (const int error = sd_bus_message_read_basic(call, 's', &ofInterface); error < 0) return error;
    if (sd_bus_message_is_method_call(call, nullptr, "GetAll") > 0) {
        return reply(call, [](MessageWriter& writer) {
            writer.container('a', "{sv}", [&] {
                for (const auto& name : menuProperties) {
                    writer.container('e', "sv", [&] {
                        writer.text(name);
                        writeMenuProperty(writer, name);
                    });
                }
            });
        });
    }
    const char* name = nullptr;
    if (const int error = sd_bus_message_read_basic(call, 's', &name); error < 0) return error;
    const bool known = std::find(menuProperties.begin(), menuProperties.end(), name) != menuProperties.end();
    if (sd_bus_message_is_method_call(call, nullptr, "Get") == 0 || !known)
        return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_PROPERTY, "The menu has no property %s", name);
    return reply(call, [&](MessageWriter& writer) { writeMenuProperty(writer, name); });
}

bool MenuObject::isEntry(std::int32_t id) const {
    return id >= firstId_ && id < firstId_ + static_cast<std::int32_t>(labels_.size());
}

const std::string& MenuObject::label(std::int32_t id) const { return labels_[static_cast<std::size_t>(id - firstId_)]; }

/// The dictionary of an entry's properties, the root's being 0. An empty `wanted` asks for all of them.
void MenuObject::writeEntry(MessageWriter& writer, std::int32_t id, const Strings& wanted) const {
    const auto write = [&](const char* name, const std::string& value) {
        if (!wanted.empty() && std::find(wanted.begin(), wanted.end(), name) == wanted.end()) return;
        writeDictEntry(writer, name, "s", [&] { writer.text(value); });
    };
    writer.container('a', "{sv}", [&] {
        if (id == 0) {
            write("children-display", "submenu");
        } else if (label(id) == separator) {
            write("type", "separator");
        } else {
            write("label", label(id));
        }
    });
}

int MenuObject::answerLayout(sd_bus_message* call) {
    std::int32_t parent = 0;
    std::int32_t depth = 0;
    Strings wanted;
    if (const int error = sd_bus_message_read(call, "ii", &parent, &depth); error < 0) return error;
    if (const int error = readStrings(call, wanted); error < 0) return error;
    if (parent != 0 && !isEntry(parent)) return replyNoEntry(call, parent);
    return reply(call, [&](MessageWriter& writer) {
        const auto leaf = [&](std::int32_t id) {
            writer.container('r', layoutType, [&] {
                writer.number(id);
                writeEntry(writer, id, wanted);
                writer.container('a', "v", [] {});
            });
        };
        writer.unsignedNumber(revision_);
        if (parent != 0 || depth == 0) return leaf(parent);
        writer.container('r', layoutType, [&] {
            writer.number(0);
            writeEntry(writer, 0, wanted);
            writer.container('a', "v", [&] {
                for (std::int32_t id = firstId_; isEntry(id); ++id) writer.container('v', "(ia{sv}av)", [&] { leaf(id); });
            });
        });
    });
}

int MenuObject::answerGroupProperties(sd_bus_message* call) {
    std::vector<std::int32_t> ids;
    Strings wanted;
    if (const int error = readNumbers(call, ids); error < 0) return error;
    if (const int error = readStrings(call, wanted); error < 0) return error;
    if (ids.empty()) {  // asks for all
        ids.push_back(0);
        for (std::int32_t id = firstId_; isEntry(id); ++id) ids.push_back(id);
    }
    return reply(call, [&](MessageWriter& writer) {
        writer.container('a', "(ia{sv})", [&] {
            for (const auto id : ids) {
                if (id != 0 && !isEntry(id)) continue;
                writer.container('r', "ia{sv}", [&] {
                    writer.number(id);
                    writeEntry(writer, id, wanted);
                });
            }
        });
    });
}

int MenuObject::answerProperty(sd_bus_message* call) {
    std::int32_t id = 0;
    const char* name = nullptr;
    if (const int error = sd_bus_message_read(call, "is", &id, &name); error < 0) return error;
    if (!isEntry(id)) return replyNoEntry(call, id);
    const std::string property = label(id) == separator ? "type" : "label";
    if (name != property)
        return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_PROPERTY, "The entry has no property %s", name);
    return sd_bus_reply_method_return(call, "v", "s", property == "type" ? "separator" : label(id).c_str());
}

/// Reads one event (isvu) and acts on it. Negative on an error, 0 if the entry does not exist.
int MenuObject::takeEvent(sd_bus_message* call) {
    std::int32_t id = 0;
    const char* event = nullptr;
    std::uint32_t timestamp = 0;
    if (const int error = sd_bus_message_read(call, "is", &id, &event); error < 0) return error;
    if (const int error = sd_bus_message_skip(call, "v"); error < 0) return error;
    if (const int error = sd_bus_message_read_basic(call, 'u', &timestamp); error < 0) return error;
    if (id != 0 && !isEntry(id)) return 0;
    if (id != 0 && std::string("clicked") == event && label(id) != separator) onClick_(label(id));
    return 1;
}

int MenuObject::answerEvent(sd_bus_message* call) {
    const int taken = takeEvent(call);
    if (taken < 0) return taken;
    if (taken == 0) return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_INVALID_ARGS, "The menu has no such entry");
    return sd_bus_reply_method_return(call, "");
}

int MenuObject::answerEventGroup(sd_bus_message* call) {
    int result = sd_bus_message_enter_container(call, 'a', "(isvu)");
    while (result >= 0 && (result = sd_bus_message_enter_container(call, 'r', "isvu")) > 0) {
        result = takeEvent(call);
        if (result >= 0) result = sd_bus_message_exit_container(call);
    }
    return result < 0 ? result : sd_bus_reply_method_return(call, "ai", 0);
}

int MenuObject::answerAboutToShow(sd_bus_message* call) {
    if (!lateLabels_.empty()) labels_ = std::exchange(lateLabels_, {});
    return sd_bus_reply_method_return(call, "b", 0);
}

int MenuObject::answerAboutToShowGroup(sd_bus_message* call) { return sd_bus_reply_method_return(call, "aiai", 0, 0); }

}  // namespace ovin
