#pragma once

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/system/FileSystem.h"

namespace ovin {

/// A disk behind a cache, which promises no more than POSIX does: a file's content is on the disk once the file was
/// synchronised, and a name once its folder was. Until then either may be lost, in any order, and content may be torn.
/// Renaming is one step. Any call can be made to fail, to do half of its work, or to be the last one.
class SimulatedDisk final : public FileSystem {
public:
    /// What a file or a folder is at one moment.
    struct Node {
        bool isFolder = false;
        std::string text;
        std::map<std::string, int> names;
    };

    /// One change of a folder's names: a name goes, a name comes, or both.
    struct Change {
        std::string removed;
        std::string added;
        int node = 0;
    };

    SimulatedDisk() { nodes_[root] = durable_[root] = Node{true, {}, {}}; }
    /// What is left after the power was lost: the disk's content alone.
    explicit SimulatedDisk(std::map<int, Node> content) : nodes_(content), durable_(std::move(content)) {
        next_ = nodes_.rbegin()->first + 1;
    }

    /// Calls so far, and which of them do what; the first is number 0. A call that fails changes nothing.
    int calls = 0;
    /// From this call on nothing happens any more: the program is dead.
    int diesAt = -1;
    /// Calls that fail with `error`.
    std::set<int> failing;
    int error = EIO;
    /// All calls to write take so many bytes at most.
    std::size_t largestWrite = static_cast<std::size_t>(-1);

    /// The program starts again: its files are closed, and what is in the cache is there still.
    void relaunch() {
        open_.clear();
        diesAt = -1;
        failing.clear();
    }

    /// Everything that could be on the disk if the power was lost now.
    [[nodiscard]] std::vector<std::map<int, Node>> afterPowerLoss() const {
        std::vector<std::map<int, Node>> results{durable_};
        for (const auto& folder : changes_) {
            branch(results, [&](auto& out, const auto& disk) { addNamesOf(folder.first, folder.second, out, disk); });
        }
        for (const int file : dirty_) {
            branch(results, [&](auto& out, const auto& disk) { addTextsOf(file, out, disk); });
        }
        return results;
    }

    // FileSystem

    int open(const std::string& path, int flags, mode_t) override {
        if (const int status = step(); status < 0) return status;
        const int folder = find(path.substr(0, path.rfind('/')));
        if (folder < 0) return fail(ENOENT);
        int node = find(path);
        if (node >= 0 && (flags & O_EXCL) != 0) return fail(EEXIST);
        if (node < 0 && (flags & O_CREAT) == 0) return fail(ENOENT);
        if (node < 0) node = add(folder, path, false);
        if ((flags & O_DIRECTORY) != 0 && !nodes_[node].isFolder) return fail(ENOTDIR);
        const int descriptor = next_++;
        open_[descriptor] = {node, 0};
        return descriptor;
    }

    bool isRegular(int file) override { return step() == 0 && !nodes_[open_[file].node].isFolder; }

    ssize_t read(int file, void* buffer, std::size_t size) override {
        if (const int status = step(); status < 0) return status;
        Open& opened = open_[file];
        const std::string& text = nodes_[opened.node].text;
        const std::size_t count = text.copy(static_cast<char*>(buffer), size, opened.offset);
        opened.offset += count;
        return static_cast<ssize_t>(count);
    }

    ssize_t write(int file, const void* data, std::size_t size) override {
        if (const int status = step(); status < 0) return status;
        const std::size_t count = std::min(size, largestWrite);
        nodes_[open_[file].node].text.append(static_cast<const char*>(data), count);
        dirty_.insert(open_[file].node);
        return static_cast<ssize_t>(count);
    }

    int fsync(int file) override {
        if (const int status = step(); status < 0) return status;
        const int id = open_[file].node;
        durable_[id] = nodes_[id];
        // If the file of a name has not reached the disk, the name leads to an empty file there.
        for (const auto& [name, node] : nodes_[id].names) durable_.try_emplace(node, Node{nodes_[node].isFolder, {}, {}});
        dirty_.erase(id);
        changes_.erase(id);
        return 0;
    }

    void close(int file) override { open_.erase(file); }

    int lock(int) override { return step(); }

    std::string linkTarget(const std::string&) override { return {}; }

    int rename(const std::string& from, const std::string& to) override {
        if (const int status = step(); status < 0) return status;
        const int folder = find(from.substr(0, from.rfind('/')));
        const int node = find(from);
        if (node < 0) return fail(ENOENT);
        change(folder, {nameIn(from), nameIn(to), node});
        return 0;
    }

    int unlink(const std::string& path) override {
        if (const int status = step(); status < 0) return status;
        const int folder = find(path.substr(0, path.rfind('/')));
        if (find(path) < 0) return fail(ENOENT);
        change(folder, {nameIn(path), {}, 0});
        return 0;
    }

    int mkdir(const std::string& path, mode_t) override {
        if (const int status = step(); status < 0) return status;
        if (find(path) >= 0) return fail(EEXIST);
        const int folder = find(path.substr(0, path.rfind('/')));
        if (folder < 0) return fail(ENOENT);
        (void)add(folder, path, true);
        return 0;
    }

private:
    struct Open {
        int node = 0;
        std::size_t offset = 0;
    };

    static constexpr int root = 1;

    static int fail(int number) {
        errno = number;
        return -1;
    }

    int step() {
        const int number = calls++;
        if (diesAt >= 0 && number >= diesAt) return fail(EIO);
        return failing.contains(number) ? fail(error) : 0;
    }

    static std::string nameIn(const std::string& path) { return path.substr(path.rfind('/') + 1); }

    [[nodiscard]] int find(const std::string& path) const {
        int node = root;
        for (std::size_t start = 1; start < path.size();) {
            const std::size_t end = std::min(path.find('/', start), path.size());
            const auto& names = nodes_.at(node).names;
            const auto found = names.find(path.substr(start, end - start));
            if (found == names.end()) return -1;
            node = found->second;
            start = end + 1;
        }
        return node;
    }

    int add(int folder, const std::string& path, bool isFolder) {
        const int node = next_++;
        nodes_[node] = Node{isFolder, {}, {}};
        if (!isFolder) dirty_.insert(node);
        change(folder, {{}, nameIn(path), node});
        return node;
    }

    void change(int folder, const Change& change) {
        make(nodes_[folder], change);
        changes_[folder].push_back(change);
    }

    static void make(Node& folder, const Change& change) {
        if (!change.removed.empty()) folder.names.erase(change.removed);
        if (!change.added.empty()) folder.names[change.added] = change.node;
    }

    using Content = std::map<int, Node>;

    /// Every choice among the changes of one folder.
    void addNamesOf(int folder, const std::vector<Change>& changes, std::vector<Content>& out, const Content& disk) const {
        for (std::size_t chosen = 0; chosen < (std::size_t{1} << changes.size()); ++chosen) {
            out.push_back(disk);
            for (std::size_t i = 0; i < changes.size(); ++i) {
                if ((chosen >> i & 1U) != 0) keep(out.back(), folder, changes[i]);
            }
        }
    }

    void addTextsOf(int file, std::vector<Content>& out, const Content& disk) const {
        out.push_back(disk);
        for (const std::string& text : tornFrom(nodes_.at(file).text)) {
            out.push_back(disk);
            out.back()[file].text = text;
        }
    }

    /// A name that has reached the disk may lead to content that has not.
    void keep(std::map<int, Node>& disk, int folder, const Change& change) const {
        make(disk.try_emplace(folder, Node{true, {}, {}}).first->second, change);
        if (!change.added.empty()) disk.try_emplace(change.node, Node{nodes_.at(change.node).isFolder, {}, {}});
    }

    static std::vector<std::string> tornFrom(const std::string& text) {
        return {{}, text.substr(0, 1), text.substr(0, text.size() / 2), std::string(text.size(), '\0'), text};
    }

    template <typename Results, typename Branches>
    static void branch(Results& results, const Branches& branches) {
        Results more;
        for (const auto& disk : results) branches(more, disk);
        results = std::move(more);
    }

    std::map<int, Node> nodes_;
    std::map<int, Node> durable_;
    std::map<int, std::vector<Change>> changes_;
    std::set<int> dirty_;
    std::map<int, Open> open_;
    int next_ = 2;
};

}  // namespace ovin
