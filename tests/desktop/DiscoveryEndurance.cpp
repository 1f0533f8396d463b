// Scans the private desktop around it a thousand times in one process, and fails when that leaves anything behind: memory,
// descriptors or threads.

#include <unistd.h>

#include <QApplication>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "discovery/ItemProvider.h"
#include "platform/linux/LinuxWorld.h"

#ifdef OVIN_SANITIZED
/// The sanitizer keeps freed memory for a while, to catch late uses of it: by default far more than this test looks for.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "quarantine_size_mb=8"; }
#endif

namespace {

constexpr int roundsBefore = 100;
constexpr int rounds = 1000;
/// An allocator keeps some freed memory; a leak of a single item's title in each round would be more than this. Sanitizers
/// need memory of their own, and the address sanitizer finds leaks by itself when the program ends.
#ifdef OVIN_SANITIZED
constexpr long mostKilobytes = 64'000;
#else
constexpr long mostKilobytes = 1'000;
#endif

struct Holdings {
    long kilobytes = 0;
    long descriptors = 0;
    long threads = 0;
};

long entries(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

Holdings holdings() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:"))
            return {std::atol(line.c_str() + 6), entries("/proc/self/fd"), entries("/proc/self/task")};
    }
    return {};
}

/// The fewest items that any of the rounds has found.
std::size_t scan(const ovin::Platform& platform, int count) {
    std::size_t fewest = SIZE_MAX;
    for (int i = 0; i < count; ++i) {
        const auto items = ovin::ItemProvider::discoverItems(platform, ovin::ItemProvider::snapshotApps(platform));
        fewest = std::min(fewest, items.size());
        QCoreApplication::processEvents();
    }
    return fewest;
}

bool isWithin(const char* what, long before, long after, long most) {
    std::printf("%s: %ld before, %ld after\n", what, before, after);
    return after - before <= most;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    const auto world = ovin::LinuxWorld::open();
    if (!world || !world->platform().accessibility.isProcessTrusted()) return std::puts("There is no desktop to scan."), 1;
    (void)scan(world->platform(), roundsBefore);
    const Holdings before = holdings();
    const std::size_t fewest = scan(world->platform(), rounds);
    const Holdings after = holdings();
    std::printf("%d rounds have found %zu items or more\n", rounds, fewest);
    const bool isFrugal = isWithin("kB", before.kilobytes, after.kilobytes, mostKilobytes);
    const bool closesFiles = isWithin("descriptors", before.descriptors, after.descriptors, 0);
    const bool endsThreads = isWithin("threads", before.threads, after.threads, 0);
    return fewest > 0 && isFrugal && closesFiles && endsThreads ? 0 : 1;
}
