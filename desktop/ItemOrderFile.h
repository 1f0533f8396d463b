#pragma once

#include <string>
#include <utility>
#include <vector>

namespace ovin {

/// The file that keeps the order of the status items, a key on each line. Whatever happens during a write, the file is the
/// old one or the new one.
class ItemOrderFile {
public:
    explicit ItemOrderFile(std::string path) : path_(std::move(path)) {}

    /// The stored keys; none when there is no file, or not one that anybody here would have written.
    [[nodiscard]] std::vector<std::string> load() const;

    /// False means that the keys could not be stored and that the file is as it was. Missing folders are made.
    [[nodiscard]] bool save(const std::vector<std::string>& keys) const;

private:
    std::string path_;
};

}  // namespace ovin
