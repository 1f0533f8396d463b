#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "desktop/status_item/ItemOptions.h"
#include "desktop/status_item/MessageWriter.h"

namespace ovin {

/// One status item on the bus: answers the methods and properties of StatusNotifierItem, as well or as badly as the
/// options demand.
class ItemObject {
public:
    /// `number` counts from 1. `print` gets a line about everything that happens to the item. `options` must outlive it.
    ItemObject(const ItemOptions& options, std::size_t number, std::function<void(const std::string& line)> print);

    /// "/StatusNotifierItem", and with the number appended from the second one on.
    const std::string& path() const { return path_; }

    /// Answers a method call to the item's path. Negative: the error to answer with.
    int answer(sd_bus_message* call);

    const std::string& title() const { return title_; }

    /// Changes the title and tells so.
    void changeTitle(sd_bus* bus, std::string title);

private:
    struct Property {
        const char* name;
        const char* type;
        std::function<void(MessageWriter&)> write;
    };

    std::vector<Property> properties() const;
    void addPlain(std::vector<Property>& list) const;
    void addPictures(std::vector<Property>& list) const;
    void addMenu(std::vector<Property>& list) const;
    static void addGarbage(std::vector<Property>& list);

    int answerMethod(sd_bus_message* call);
    int answerProperties(sd_bus_message* call);
    int answerGet(sd_bus_message* call, const std::string& name);
    int answerGetAll(sd_bus_message* call);
    int answerWithPosition(sd_bus_message* call, const char* event);
    int answerScroll(sd_bus_message* call);

    const ItemOptions& options_;
    std::size_t number_;
    std::function<void(const std::string&)> print_;
    std::string path_;
    std::string id_;
    std::string title_;
    std::string toolTip_;
};

}  // namespace ovin
