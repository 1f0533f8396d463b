#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "desktop/status_item/MessageWriter.h"

namespace ovin {

/// A flat menu over the interface com.canonical.dbusmenu.
class MenuObject {
public:
    static constexpr auto path = "/MenuBar";
    static constexpr auto interface = "com.canonical.dbusmenu";

    /// `onClick` gets the label of an entry that somebody chooses.
    /// There are `lateLabels` instead of `labels` from when the menu is said to be about to show, if there are any.
    MenuObject(std::vector<std::string> labels, std::vector<std::string> lateLabels,
               std::function<void(const std::string&)> onClick);

    /// Answers a method call to the menu's path. Negative: the error to answer with.
    int answer(sd_bus_message* call);

    /// Appends an entry and gives all entries new ids, as programs do that rebuild their menus.
    void change(sd_bus* bus, const std::string& label);

private:
    int answerProperties(sd_bus_message* call);
    int answerLayout(sd_bus_message* call);
    int answerGroupProperties(sd_bus_message* call);
    int answerProperty(sd_bus_message* call);
    int answerEvent(sd_bus_message* call);
    int answerEventGroup(sd_bus_message* call);
    int answerAboutToShow(sd_bus_message* call);
    int answerAboutToShowGroup(sd_bus_message* call);
    int takeEvent(sd_bus_message* call);

    bool isEntry(std::int32_t id) const;
    const std::string& label(std::int32_t id) const;
    void writeEntry(MessageWriter& writer, std::int32_t id, const std::vector<std::string>& wanted) const;

    std::vector<std::string> labels_;
    std::vector<std::string> lateLabels_;
    std::function<void(const std::string&)> onClick_;
    std::int32_t firstId_ = 1;
    std::uint32_t revision_ = 1;
};

}  // namespace ovin
