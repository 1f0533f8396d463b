#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct sd_bus;
struct sd_bus_message;

namespace ovin {

/// Asks what a discovery asks, as a bare client: one thread, plain sd-bus, every request sent as soon as it can be known,
/// and answers read only where the next request depends on them. Discoveries are compared with it.
class PipelinedRead {
public:
    /// Connects to the session bus and, when there is a menu bar agent, to the accessibility bus. Ends the program when
    /// there is no session bus.
    PipelinedRead();
    ~PipelinedRead();
    PipelinedRead(const PipelinedRead&) = delete;
    PipelinedRead& operator=(const PipelinedRead&) = delete;

    /// The items that the watcher knows.
    [[nodiscard]] std::size_t itemCount() const { return items_.size(); }
    [[nodiscard]] bool hasAgent() const { return accessibility_ != nullptr; }

    /// Sends the request for the properties of all items. Nothing is read before `finish`.
    void askItems();

    /// Sends the first of the requests for the frames of all slots of the bar and the items in them.
    void askBar();

    /// Waits until all of that is answered; the number of answers that were no errors.
    [[nodiscard]] std::size_t finish();

private:
    using Handler = std::function<void(sd_bus_message*)>;
    struct Object {
        std::string destination;
        std::string path;
    };
    struct Request;

    void ask(sd_bus* bus, const Object& object, const char* interface, const char* member, Handler handler,
             const std::vector<const char*>& texts = {});
    void askChildren(const Object& object, std::function<void(const Object&)> handleChild);
    void askProgram(const Object& program);
    void askWindow(const Object& window);
    void askSlot(const Object& slot);

    sd_bus* session_ = nullptr;
    sd_bus* accessibility_ = nullptr;
    unsigned agentPID_ = 0;
    std::vector<Object> items_;
    std::size_t outstanding_ = 0;
    std::size_t answers_ = 0;
};

}  // namespace ovin
