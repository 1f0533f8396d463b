// Runs a fuzzer over the files of a folder, for compilers without libFuzzer.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(count > 1 ? arguments[1] : ".")) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        // Whole, and cut off anywhere.
        for (std::size_t length = 0; length <= text.size(); ++length) {
            (void)LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), length);
        }
        ++files;
    }
    std::printf("%d files\n", files);
    return files == 0 ? 1 : 0;
}
